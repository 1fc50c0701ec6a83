// The item as a window in an X11 system tray: the only way to text beside the symbol on xfce, and
// the only item at all in a panel without a watcher. The panel decides the height; the item answers
// with the width that symbol and text then need.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPoint>
#include <QSize>
#include <QTimer>
#include <functional>
#include <optional>

#include "platform/freedesktop/statusbar/picture/StatusPicture.h"
#include "platform/freedesktop/statusbar/xembed/TrayOwner.h"
#include "platform/freedesktop/statusbar/xembed/TrayWindow.h"

namespace tollbeam {

class XEmbedIcon : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  /// Both with the pointer's position on the screen, in physical pixels.
  struct Handlers {
    std::function<void(QPoint)> activate;
    std::function<void(QPoint)> contextMenu;
  };

  /// `tray` and `symbols` outlive this object.
  XEmbedIcon(const XServer& server, const TrayOwner& tray, Symbols& symbols, Handlers handlers);
  ~XEmbedIcon() override;

  [[nodiscard]] bool isDocked() const { return docked_; }

  /// Asks the tray for a place; `docked` or `refused` follows.
  void dock();
  void leave();

  void setContent(const QString& symbol, const QString& text, const QString& toolTip);

  /// Draws again, in the colours that the panel has now.
  void redraw();

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void docked();
  /// The tray did not answer, or gave a place and took it back. The item has left the tray.
  void refused();

 private:
  void giveUp();
  void askForWidth();
  void paint();
  [[nodiscard]] StatusPicture picture() const;
  [[nodiscard]] QColor colour() const;
  [[nodiscard]] std::optional<QColor> ground() const;
  void onReparented(xcb_window_t parent);
  void onConfigured(QSize given);
  void showToolTip();
  void hideToolTip();

  XServer server_;
  const TrayOwner& tray_;
  Symbols& symbols_;
  const Handlers handlers_;
  /// From asking for a place until leaving.
  std::optional<TrayWindow> window_;
  bool docked_ = false;
  QSize size_;
  QString symbol_;
  QString text_;
  QString toolTip_;
  QTimer dockTimeout_;
  QTimer settling_;
  QTimer hovering_;
};

/// Where a physical pixel of the screen is in Qt's coordinates.
[[nodiscard]] QPoint logicalPosition(QPoint physical);

}  // namespace tollbeam
