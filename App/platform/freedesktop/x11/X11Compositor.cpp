#include "platform/freedesktop/x11/X11Compositor.h"

#include <xcb/shape.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <array>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {

namespace {

bool supportsInputShapes(xcb_connection_t* connection) {
  const auto* extension = xcb_get_extension_data(connection, &xcb_shape_id);
  if (!extension || !extension->present) return false;
  const auto version = xcbReply(
      xcb_shape_query_version_reply(connection, xcb_shape_query_version(connection), nullptr));
  return version && (version->major_version > 1 || version->minor_version >= 1);
}

}  // namespace

bool X11Compositor::isRunning() const {
  const auto x = XServer::ofApplication();
  if (!x) return QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
  return x->ownerOf(x->selectionOfScreen("_NET_WM_CM_S")) != XCB_WINDOW_NONE;
}

void X11Compositor::setShadow(std::uintptr_t window, const WindowShadow& shadow) {
  const auto x = XServer::ofApplication();
  if (!x) return;
  auto* connection = x->connection();
  const auto id = static_cast<xcb_window_t>(window);
  // GTK sets this for the shadows of its own windows, so window managers and compositors know it.
  const auto extents = x->atom("_GTK_FRAME_EXTENTS");
  const bool shapes = supportsInputShapes(connection);
  if (shadow.isEmpty()) {
    x->tolerate(xcb_delete_property_checked(connection, id, extents));
    if (!shapes) return;
    x->tolerate(xcb_shape_mask_checked(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, id, 0, 0,
                                       XCB_PIXMAP_NONE));
    return;
  }
  const std::array<std::uint32_t, 4> sides{
      static_cast<std::uint32_t>(shadow.left), static_cast<std::uint32_t>(shadow.right),
      static_cast<std::uint32_t>(shadow.top), static_cast<std::uint32_t>(shadow.bottom)};
  x->tolerate(xcb_change_property_checked(connection, XCB_PROP_MODE_REPLACE, id, extents,
                                          XCB_ATOM_CARDINAL, 32, sides.size(), sides.data()));
  if (!shapes) return;
  const xcb_rectangle_t body{
      static_cast<std::int16_t>(shadow.left), static_cast<std::int16_t>(shadow.top),
      static_cast<std::uint16_t>(shadow.bodyWidth), static_cast<std::uint16_t>(shadow.bodyHeight)};
  x->tolerate(xcb_shape_rectangles_checked(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                                           XCB_CLIP_ORDERING_UNSORTED, id, 0, 0, 1, &body));
}

}  // namespace tollbeam
