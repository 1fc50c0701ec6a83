// The X11 system tray of this screen: the window that owns its selection, and its properties. It
// comes with a panel, goes with it, and may change its visual when a compositor starts.
#pragma once

#include <QColor>
#include <QObject>
#include <optional>

#include "platform/freedesktop/x11/ManagerSelection.h"

namespace tollbeam {

class TrayOwner : public QObject {
  Q_OBJECT

 public:
  explicit TrayOwner(const XServer& server);

  /// None when there is no tray.
  [[nodiscard]] xcb_window_t window() const { return selection_.window(); }
  /// The visual that its icons must have; the screen's own when it names none.
  [[nodiscard]] xcb_visualid_t visual() const { return visual_; }
  /// The colour of its symbols; absent when it names none.
  [[nodiscard]] std::optional<QColor> foreground() const { return foreground_; }
  [[nodiscard]] bool vertical() const { return vertical_; }

 Q_SIGNALS:
  /// Another window, or none, or another visual.
  void ownerChanged();
  /// The foreground or the orientation was set.
  void lookChanged();

 private:
  void read();
  void onProperty(xcb_atom_t property);

  XServer server_;
  ManagerSelection selection_;
  xcb_visualid_t visual_ = 0;
  std::optional<QColor> foreground_;
  bool vertical_ = false;
};

}  // namespace tollbeam
