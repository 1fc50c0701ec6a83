// Puts a picture with transparency on a tray window. In a tray of a visual with alpha the panel
// mixes it with its own ground; in any other the window shows the panel's ground by itself and the
// server mixes the picture over it.
#pragma once

#include <xcb/render.h>

#include <QColor>
#include <QImage>
#include <optional>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {

class TrayCanvas {
 public:
  TrayCanvas(const XServer& server, xcb_window_t window, xcb_visualid_t visual);
  TrayCanvas(const TrayCanvas&) = delete;
  TrayCanvas& operator=(const TrayCanvas&) = delete;
  ~TrayCanvas();

  /// Premultiplied, at the window's upper left corner.
  void draw(const QImage& picture);

  /// The panel's colour behind the window; absent when the panel keeps it to itself. Clears the
  /// window: draw afterwards.
  [[nodiscard]] std::optional<QColor> ground(const QSize& size) const;

 private:
  void mix(const QImage& picture);

  XServer server_;
  xcb_window_t window_;
  bool alpha_;
  xcb_gcontext_t context_ = XCB_NONE;
  xcb_render_picture_t target_ = XCB_NONE;
  xcb_render_pictformat_t argb_ = XCB_NONE;
};

}  // namespace tollbeam
