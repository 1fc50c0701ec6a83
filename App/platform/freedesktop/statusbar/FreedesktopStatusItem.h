// Decides where the item is shown, and hands the content there. The parts know nothing of each
// other.
#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <optional>

#include "platform/StatusBar.h"
#include "platform/freedesktop/statusbar/PanelThemeWatch.h"
#include "platform/freedesktop/statusbar/sni/DBusMenu.h"
#include "platform/freedesktop/statusbar/sni/StatusNotifierItem.h"
#include "platform/freedesktop/statusbar/sni/WatcherMonitor.h"
#include "platform/freedesktop/statusbar/xembed/XEmbedIcon.h"
#include "resources/Symbols.h"

class QMenu;

namespace tollbeam {

class FreedesktopStatusItem : public QObject, public StatusItem {
  Q_OBJECT

 public:
  FreedesktopStatusItem(Bus& sessionBus, QString iconThemePath, Actions actions);
  ~FreedesktopStatusItem() override;

  void setContent(const StatusItemContent& content) override;

 private:
  [[nodiscard]] bool trayComesFirst() const;
  void arrange();
  void showOnBus();
  void refresh();
  void refreshOnBus();
  void expectOtherColours();
  void lookAgainSoon();
  [[nodiscard]] bool hostNeedsColour() const;
  [[nodiscard]] QColor colourOnHost() const;
  [[nodiscard]] QStringList statusLines() const;
  void activate(int x, int y);
  void choose(StatusMenuEntry::Kind kind);
  void popUpMenu(QPoint physical);

  Actions actions_;
  QString iconThemePath_;
  StatusItemContent content_;
  Symbols symbols_;
  std::optional<XServer> xServer_;
  WatcherMonitor watcher_;
  DBusMenu dbusMenu_;
  StatusNotifierItem onBus_;
  std::unique_ptr<TrayOwner> tray_;
  std::unique_ptr<XEmbedIcon> inTray_;
  bool trayRefused_ = false;
  std::unique_ptr<QMenu> menu_;
  PanelThemeWatch themes_;
  QTimer lookAgain_;
};

}  // namespace tollbeam
