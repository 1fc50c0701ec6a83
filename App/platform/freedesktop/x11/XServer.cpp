#include "platform/freedesktop/x11/XServer.h"

#include <QGuiApplication>
#include <QImage>
#include <cstring>

namespace tollbeam {

std::optional<XServer> XServer::ofApplication() {
  const auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
  const auto* x11 =
      app != nullptr ? app->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
  if (x11 == nullptr || x11->connection() == nullptr) return std::nullopt;
  auto* connection = x11->connection();
  int number = 0;
  char* host = nullptr;
  int display = 0;
  if (xcb_parse_display(nullptr, &host, &display, &number) != 0) std::free(host);
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  if (number >= screens.rem) number = 0;
  for (int i = 0; i < number; ++i) xcb_screen_next(&screens);
  return XServer(connection, screens.data, number);
}

xcb_atom_t XServer::atom(const QByteArray& name) const {
  if (const auto known = atoms_->constFind(name); known != atoms_->constEnd()) return *known;
  const auto cookie =
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.constData());
  const auto reply = xcbReply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  if (!reply) return XCB_ATOM_NONE;
  return atoms_->insert(name, reply->atom).value();
}

xcb_window_t XServer::ownerOf(xcb_atom_t selection) const {
  const auto cookie = xcb_get_selection_owner(connection_, selection);
  const auto reply = xcbReply(xcb_get_selection_owner_reply(connection_, cookie, nullptr));
  return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<std::uint32_t> XServer::numbers(xcb_window_t window, xcb_atom_t property) const {
  const auto cookie =
      xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1024);
  const auto reply = xcbReply(xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply || reply->format != 32) return {};
  const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + reply->value_len};
}

std::optional<std::vector<std::uint8_t>> XServer::bytes(xcb_window_t window,
                                                        xcb_atom_t property) const {
  constexpr std::uint32_t kLongest = (4U << 20) / 4;
  const auto cookie =
      xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kLongest);
  const auto reply = xcbReply(xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply || reply->format != 8 || reply->bytes_after != 0) return std::nullopt;
  const auto* first = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
  return std::vector<std::uint8_t>(first, first + reply->value_len);
}

void XServer::alsoSelect(xcb_window_t window, std::uint32_t events) const {
  const auto cookie = xcb_get_window_attributes(connection_, window);
  const auto reply = xcbReply(xcb_get_window_attributes_reply(connection_, cookie, nullptr));
  if (!reply || (reply->your_event_mask & events) == events) return;
  const std::uint32_t mask = reply->your_event_mask | events;
  tolerate(xcb_change_window_attributes_checked(connection_, window, XCB_CW_EVENT_MASK, &mask));
  // Qt flushes only with its own requests, which may be much later.
  xcb_flush(connection_);
}

std::uint8_t XServer::depthOf(xcb_visualid_t visual) const {
  for (auto depths = xcb_screen_allowed_depths_iterator(screen_); depths.rem > 0;
       xcb_depth_next(&depths)) {
    for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
         xcb_visualtype_next(&visuals)) {
      if (visuals.data->visual_id == visual) return depths.data->depth;
    }
  }
  return 0;
}

std::optional<QPoint> XServer::positionOf(xcb_window_t window) const {
  const auto cookie = xcb_translate_coordinates(connection_, window, root(), 0, 0);
  const auto reply = xcbReply(xcb_translate_coordinates_reply(connection_, cookie, nullptr));
  if (!reply) return std::nullopt;
  return QPoint(reply->dst_x, reply->dst_y);
}

std::optional<QImage> XServer::imageOf(xcb_window_t window, const QRect& area) const {
  const auto cookie = xcb_get_image(
      connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(area.x()),
      static_cast<std::int16_t>(area.y()), static_cast<std::uint16_t>(area.width()),
      static_cast<std::uint16_t>(area.height()), ~0U);
  const auto reply = xcbReply(xcb_get_image_reply(connection_, cookie, nullptr));
  if (!reply || (reply->depth != 24 && reply->depth != 32)) return std::nullopt;
  QImage image(area.size(), QImage::Format_RGB32);
  if (image.sizeInBytes() != xcb_get_image_data_length(reply.get())) return std::nullopt;
  std::memcpy(image.bits(), xcb_get_image_data(reply.get()),
              static_cast<std::size_t>(image.sizeInBytes()));
  return image;
}

QPoint XServer::pointer() const {
  const auto cookie = xcb_query_pointer(connection_, root());
  const auto reply = xcbReply(xcb_query_pointer_reply(connection_, cookie, nullptr));
  return reply ? QPoint(reply->root_x, reply->root_y) : QPoint();
}

}  // namespace tollbeam
