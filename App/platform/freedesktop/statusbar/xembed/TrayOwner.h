// The X11 system tray of this screen: the window that owns its selection, and what it says of
// itself. It comes with a panel, goes with it, and may change its visual when a compositor starts.
#pragma once

#include <QColor>
#include <QObject>
#include <optional>

#include "platform/freedesktop/x11/ManagerSelection.h"

namespace tollbeam {

class TrayOwner : public QObject {
  Q_OBJECT

 public:
  explicit TrayOwner(const XServer& server, QObject* parent = nullptr);

  /// None when there is no tray.
  [[nodiscard]] xcb_window_t window() const { return selection_.window(); }
  /// The visual it wants of its icons; the screen's own when it does not say.
  [[nodiscard]] xcb_visualid_t visual() const { return visual_; }
  /// The colour it draws symbols in; absent when it does not say.
  [[nodiscard]] std::optional<QColor> foreground() const { return foreground_; }
  [[nodiscard]] bool vertical() const { return vertical_; }

 Q_SIGNALS:
  /// Another window, or none, or one that wants another visual.
  void ownerChanged();
  void lookChanged();

 private:
  void onOwner();
  void readVisual();
  void readLook();
  void onProperty(xcb_atom_t property);

  XServer server_;
  struct {
    xcb_atom_t visual, colours, orientation;
  } atoms_;
  ManagerSelection selection_;
  xcb_visualid_t visual_ = 0;
  std::optional<QColor> foreground_;
  bool vertical_ = false;
};

}  // namespace tollbeam
