// The X window that a tray embeds: how it is made, how it asks for a place, and how a picture with
// transparency gets onto it. In a tray whose visual has alpha the panel blends the window with its
// own ground; in any other the window shows the panel's ground by itself and the X server blends
// the picture over it. The window's events go to its owner.
#pragma once

#include <xcb/render.h>

#include <QColor>
#include <QImage>
#include <QSize>
#include <optional>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {

class TrayWindow {
 public:
  /// Square, of `side` pixels, until a tray decides.
  TrayWindow(const XServer& server, xcb_visualid_t visual, int side, std::uint32_t events);
  TrayWindow(const TrayWindow&) = delete;
  TrayWindow& operator=(const TrayWindow&) = delete;
  ~TrayWindow();

  [[nodiscard]] xcb_window_t id() const { return id_; }

  void askForPlace(xcb_window_t tray) const;
  /// Trays keep this shape, at a height of their own.
  void askForSize(QSize size) const;
  /// Only before it has a place: then the tray decides.
  void resize(QSize size) const;

  /// Premultiplied, at the upper left corner.
  void draw(const QImage& picture) const;

  /// The panel's colour behind the window, which has this size; absent where the window does not
  /// show it. Clears the window: draw afterwards.
  [[nodiscard]] std::optional<QColor> ground(QSize size) const;

 private:
  void create(xcb_visualid_t visual, std::uint16_t side, std::uint32_t events);
  void describe() const;
  void findFormats(xcb_visualid_t visual);
  void blend(xcb_pixmap_t picture, std::uint16_t width, std::uint16_t height) const;

  XServer server_;
  xcb_window_t id_;
  bool alpha_;
  xcb_colormap_t colours_ = XCB_NONE;
  xcb_render_pictformat_t pictureFormat_ = XCB_NONE;
  xcb_render_pictformat_t windowFormat_ = XCB_NONE;
};

}  // namespace tollbeam
