#include "platform/freedesktop/statusbar/xembed/FakeTray.h"

#include <array>
#include <cstring>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam::test {
namespace {

const QByteArray kSelection = "_NET_SYSTEM_TRAY_S0";

}  // namespace

FakeTray::FakeTray(const Behaviour& behaviour)
    : behaviour_(behaviour),
      visual_(program_.screen().root_visual),
      depth_(program_.screen().root_depth),
      owner_(program_.own(kSelection)) {
  if (behaviour_.alpha) {
    findVisual();
    program_.set(owner_, "_NET_SYSTEM_TRAY_VISUAL", XCB_ATOM_VISUALID, {visual_});
  }
  program_.set(owner_, "_NET_SYSTEM_TRAY_ORIENTATION", XCB_ATOM_CARDINAL,
               {behaviour_.vertical ? 1U : 0U});
  if (behaviour_.foreground) setForeground(*behaviour_.foreground);
  program_.announce(kSelection, owner_);
}

void FakeTray::setForeground(const QColor& colour) {
  std::vector<std::uint32_t> values;
  for (int i = 0; i < 4; ++i) {
    for (const int channel : {colour.red(), colour.green(), colour.blue()})
      values.push_back(static_cast<std::uint32_t>(channel * 257));
  }
  program_.set(owner_, "_NET_SYSTEM_TRAY_COLORS", XCB_ATOM_CARDINAL, values);
}

void FakeTray::findVisual() {
  for (auto depths = xcb_screen_allowed_depths_iterator(&program_.screen()); depths.rem > 0;
       xcb_depth_next(&depths)) {
    if (depths.data->depth != 32) continue;
    visual_ = xcb_depth_visuals_iterator(depths.data).data->visual_id;
    depth_ = 32;
  }
}

void FakeTray::pump() {
  while (const auto event = xcbReply(xcb_poll_for_event(program_.connection()))) {
    const auto type = event->response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE) {
      const auto* request = reinterpret_cast<xcb_client_message_event_t*>(event.get());
      if (request->type == program_.atom("_NET_SYSTEM_TRAY_OPCODE") && !behaviour_.deaf)
        take(request->data.data32[2]);
    } else if (type == XCB_PROPERTY_NOTIFY) {
      const auto* change = reinterpret_cast<xcb_property_notify_event_t*>(event.get());
      if (change->window == icon_ && change->atom == XCB_ATOM_WM_NORMAL_HINTS) fit();
    }
  }
}

void FakeTray::take(xcb_window_t icon) {
  icon_ = icon;
  auto* c = program_.connection();
  const auto socket = xcb_generate_id(c);
  const auto colours = xcb_generate_id(c);
  xcb_create_colormap(c, XCB_COLORMAP_ALLOC_NONE, colours, program_.root(), visual_);
  const auto ground = static_cast<std::uint32_t>(behaviour_.ground.rgba());
  const std::array<std::uint32_t, 3> values{ground, 0, colours};
  xcb_create_window(c, depth_, socket, program_.root(), 100, 50, 300,
                    static_cast<std::uint16_t>(behaviour_.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    visual_, XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP,
                    values.data());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(c, icon_, XCB_CW_EVENT_MASK, &events);
  xcb_change_save_set(c, XCB_SET_MODE_INSERT, icon_);
  xcb_reparent_window(c, icon_, socket, 0, 0);
  xcb_map_window(c, socket);
  xcb_map_window(c, icon_);
  fit();
}

// As the panels' toolkits do: the shape that the icon asks for, at the panel's own height.
void FakeTray::fit() {
  auto* c = program_.connection();
  const auto cookie =
      xcb_get_property(c, 0, icon_, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 0, 18);
  const auto reply = xcbReply(xcb_get_property_reply(c, cookie, nullptr));
  if (!reply || reply->value_len < 7) return;
  const auto* hints = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  const int width = static_cast<int>(hints[5]) * behaviour_.height / static_cast<int>(hints[6]);
  giveIcon({behaviour_.square ? behaviour_.height : width, behaviour_.height});
}

void FakeTray::giveIcon(QSize size) {
  auto* c = program_.connection();
  iconSize_ = size;
  const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(size.width()),
                                            static_cast<std::uint32_t>(size.height())};
  xcb_configure_window(c, icon_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
  xcb_flush(c);
}

QImage FakeTray::picture() const {
  if (icon_ == XCB_WINDOW_NONE) return {};
  auto* c = program_.connection();
  const auto width = static_cast<std::uint16_t>(iconSize_.width());
  const auto height = static_cast<std::uint16_t>(iconSize_.height());
  const auto cookie = xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, icon_, 0, 0, width, height, ~0U);
  const auto reply = xcbReply(xcb_get_image_reply(c, cookie, nullptr));
  QImage image(iconSize_,
               behaviour_.alpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  if (!reply || xcb_get_image_data_length(reply.get()) != image.sizeInBytes()) return {};
  std::memcpy(image.bits(), xcb_get_image_data(reply.get()),
              static_cast<std::size_t>(image.sizeInBytes()));
  return image;
}

void FakeTray::release(std::uint8_t button, QPoint place) {
  auto* c = program_.connection();
  xcb_button_release_event_t event{};
  event.response_type = XCB_BUTTON_RELEASE;
  event.detail = button;
  event.root = program_.root();
  event.event = icon_;
  event.root_x = static_cast<std::int16_t>(place.x());
  event.root_y = static_cast<std::int16_t>(place.y());
  event.event_x = static_cast<std::int16_t>(iconSize_.width() / 2);
  event.event_y = static_cast<std::int16_t>(iconSize_.height() / 2);
  xcb_send_event(c, 0, icon_, XCB_EVENT_MASK_BUTTON_RELEASE, reinterpret_cast<const char*>(&event));
  xcb_flush(c);
}

}  // namespace tollbeam::test
