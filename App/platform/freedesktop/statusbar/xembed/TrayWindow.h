// The X window that a tray swallows: how it is made, what it says of itself, and how it asks for a
// place. What happens to it afterwards comes as events, which its owner handles.
#pragma once

#include <QSize>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {

class TrayWindow {
 public:
  /// Square, of `side` pixels, until a tray decides. A visual of 32 bits is transparent; in any
  /// other the window shows the ground of the window it stands in.
  TrayWindow(const XServer& server, xcb_visualid_t visual, int side, std::uint32_t events);
  TrayWindow(const TrayWindow&) = delete;
  TrayWindow& operator=(const TrayWindow&) = delete;
  ~TrayWindow();

  [[nodiscard]] xcb_window_t id() const { return id_; }

  void askForPlace(xcb_window_t tray) const;
  /// Trays keep to its shape, at a height of their own.
  void askForSize(QSize size) const;
  /// Only before it has a place: then the tray decides.
  void resize(QSize size) const;

 private:
  void create(xcb_visualid_t visual, std::uint16_t side, std::uint32_t events);
  void describe() const;

  XServer server_;
  xcb_window_t id_;
  xcb_colormap_t colours_ = XCB_NONE;
};

}  // namespace tollbeam
