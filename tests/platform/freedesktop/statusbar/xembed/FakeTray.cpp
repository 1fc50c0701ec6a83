#include "platform/freedesktop/statusbar/xembed/FakeTray.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace tollbeam::test {
namespace {

template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
  return {reply, &std::free};
}

}  // namespace

FakeTray::FakeTray(const Ways& ways) : ways_(ways), connection_(xcb_connect(nullptr, nullptr)) {
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  visual_ = screen_->root_visual;
  depth_ = screen_->root_depth;
  if (ways_.alpha) findVisual();

  owner_ = xcb_generate_id(connection_);
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, owner_, screen_->root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  if (ways_.alpha) set("_NET_SYSTEM_TRAY_VISUAL", "VISUALID", 1, &visual_);
  const std::uint32_t orientation = ways_.vertical ? 1 : 0;
  set("_NET_SYSTEM_TRAY_ORIENTATION", "CARDINAL", 1, &orientation);
  if (ways_.foreground) setForeground(*ways_.foreground);
  const auto selection = atom("_NET_SYSTEM_TRAY_S0");
  xcb_set_selection_owner(connection_, owner_, selection, XCB_CURRENT_TIME);

  xcb_client_message_event_t news{};
  news.response_type = XCB_CLIENT_MESSAGE;
  news.format = 32;
  news.window = screen_->root;
  news.type = atom("MANAGER");
  news.data.data32[1] = selection;
  news.data.data32[2] = owner_;
  xcb_send_event(connection_, 0, screen_->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&news));
  xcb_flush(connection_);
}

FakeTray::~FakeTray() { xcb_disconnect(connection_); }

xcb_atom_t FakeTray::atom(const char* name) const {
  const auto cookie =
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  return owned(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
}

void FakeTray::set(const char* property, const char* type, std::uint32_t length,
                   const void* values) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, owner_, atom(property), atom(type), 32,
                      length, values);
}

void FakeTray::setForeground(const QColor& colour) {
  std::array<std::uint32_t, 12> values{};
  for (std::size_t i = 0; i < values.size(); i += 3) {
    values[i] = static_cast<std::uint32_t>(colour.red() * 257);
    values[i + 1] = static_cast<std::uint32_t>(colour.green() * 257);
    values[i + 2] = static_cast<std::uint32_t>(colour.blue() * 257);
  }
  set("_NET_SYSTEM_TRAY_COLORS", "CARDINAL", static_cast<std::uint32_t>(values.size()),
      values.data());
  xcb_flush(connection_);
}

void FakeTray::findVisual() {
  for (auto depths = xcb_screen_allowed_depths_iterator(screen_); depths.rem > 0;
       xcb_depth_next(&depths)) {
    if (depths.data->depth != 32) continue;
    visual_ = xcb_depth_visuals_iterator(depths.data).data->visual_id;
    depth_ = 32;
  }
}

void FakeTray::pump() {
  while (auto* raw = xcb_poll_for_event(connection_)) {
    const auto event = owned(raw);
    const auto type = event->response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE) {
      const auto* request = reinterpret_cast<xcb_client_message_event_t*>(event.get());
      if (request->type == atom("_NET_SYSTEM_TRAY_OPCODE") && !ways_.deaf)
        take(request->data.data32[2]);
    } else if (type == XCB_PROPERTY_NOTIFY) {
      const auto* change = reinterpret_cast<xcb_property_notify_event_t*>(event.get());
      if (change->window == icon_ && change->atom == XCB_ATOM_WM_NORMAL_HINTS) fit();
    }
  }
}

void FakeTray::take(xcb_window_t icon) {
  icon_ = icon;
  socket_ = xcb_generate_id(connection_);
  const auto colours = xcb_generate_id(connection_);
  xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colours, screen_->root, visual_);
  const auto ground = static_cast<std::uint32_t>(ways_.ground.rgba());
  const std::array<std::uint32_t, 3> values{ground, 0, colours};
  xcb_create_window(connection_, depth_, socket_, screen_->root, 100, 50, 300,
                    static_cast<std::uint16_t>(ways_.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    visual_, XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP,
                    values.data());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection_, icon_, XCB_CW_EVENT_MASK, &events);
  xcb_change_save_set(connection_, XCB_SET_MODE_INSERT, icon_);
  xcb_reparent_window(connection_, icon_, socket_, 0, 0);
  xcb_map_window(connection_, socket_);
  xcb_map_window(connection_, icon_);
  fit();
}

// As the panels' toolkits do: the wished shape, at the panel's own height.
void FakeTray::fit() {
  const auto cookie = xcb_get_property(connection_, 0, icon_, XCB_ATOM_WM_NORMAL_HINTS,
                                       XCB_ATOM_WM_SIZE_HINTS, 0, 18);
  const auto reply = owned(xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply || reply->value_len < 7) return;
  const auto* hints = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  const int width = static_cast<int>(hints[5]) * ways_.height / static_cast<int>(hints[6]);
  giveIcon({ways_.square ? ways_.height : width, ways_.height});
}

void FakeTray::giveIcon(QSize size) {
  iconSize_ = size;
  const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(size.width()),
                                            static_cast<std::uint32_t>(size.height())};
  xcb_configure_window(connection_, icon_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
  xcb_flush(connection_);
}

QImage FakeTray::picture() const {
  if (icon_ == XCB_WINDOW_NONE) return {};
  const auto width = static_cast<std::uint16_t>(iconSize_.width());
  const auto height = static_cast<std::uint16_t>(iconSize_.height());
  const auto cookie =
      xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, icon_, 0, 0, width, height, ~0U);
  const auto reply = owned(xcb_get_image_reply(connection_, cookie, nullptr));
  QImage image(iconSize_, ways_.alpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  if (!reply || xcb_get_image_data_length(reply.get()) != image.sizeInBytes()) return {};
  std::memcpy(image.bits(), xcb_get_image_data(reply.get()),
              static_cast<std::size_t>(image.sizeInBytes()));
  return image;
}

void FakeTray::release(std::uint8_t button, QPoint place) {
  xcb_button_release_event_t event{};
  event.response_type = XCB_BUTTON_RELEASE;
  event.detail = button;
  event.root = screen_->root;
  event.event = icon_;
  event.root_x = static_cast<std::int16_t>(place.x());
  event.root_y = static_cast<std::int16_t>(place.y());
  event.event_x = static_cast<std::int16_t>(iconSize_.width() / 2);
  event.event_y = static_cast<std::int16_t>(iconSize_.height() / 2);
  xcb_send_event(connection_, 0, icon_, XCB_EVENT_MASK_BUTTON_RELEASE,
                 reinterpret_cast<const char*>(&event));
  xcb_flush(connection_);
}

}  // namespace tollbeam::test
