// The item as a window in an X11 system tray: the only way to text beside the symbol on xfce, and
// the only item at all in a panel without a watcher. The panel decides the height; we answer with
// the width that symbol and text then need.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPoint>
#include <QSize>
#include <QTimer>
#include <functional>
#include <optional>

#include "platform/freedesktop/statusbar/picture/StatusPicture.h"
#include "platform/freedesktop/statusbar/xembed/TrayCanvas.h"
#include "platform/freedesktop/statusbar/xembed/TrayOwner.h"
#include "platform/freedesktop/statusbar/xembed/TrayWindow.h"
#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {

class XEmbedIcon : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  enum class State { Away, Asking, Docked };

  /// Both with the pointer's place on the screen, in physical pixels.
  struct Handlers {
    std::function<void(QPoint)> activate;
    std::function<void(QPoint)> contextMenu;
  };

  XEmbedIcon(const XServer& server, const TrayOwner& tray, Symbols& symbols, Handlers handlers,
             QObject* parent = nullptr);
  ~XEmbedIcon() override;

  [[nodiscard]] State state() const { return state_; }

  /// Asks the tray for a place; ends in Docked, or in refused() when it gives none.
  void dock();
  void leave();

  void setContent(const QString& symbol, const QString& text, const QString& toolTip);

  /// Draws again, in the colours that the panel has now.
  void redraw();

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void docked();
  /// The tray did not answer, or gave the place and took it back. It is Away again.
  void refused();

 private:
  void giveUp();
  void askForWidth();
  void paint();
  [[nodiscard]] StatusPicture picture() const;
  [[nodiscard]] QColor colour() const;
  [[nodiscard]] std::optional<QColor> ground() const;
  void handle(const xcb_generic_event_t& event);
  void onReparented(xcb_window_t parent);
  void onConfigured(QSize given);
  void onPressed(const xcb_button_press_event_t& press);
  void onReleased(const xcb_button_release_event_t& release);
  void showToolTip();
  void hideToolTip();

  XServer server_;
  const TrayOwner& tray_;
  Symbols& symbols_;
  Handlers handlers_;
  State state_ = State::Away;
  std::optional<TrayWindow> window_;
  std::optional<TrayCanvas> canvas_;
  QSize size_;
  QString symbol_;
  QString text_;
  QString toolTip_;
  QTimer patience_;
  QTimer settling_;
  QTimer hovering_;
};

/// Where a physical pixel of the screen is in Qt's coordinates.
[[nodiscard]] QPoint logicalPosition(QPoint physical);

}  // namespace tollbeam
