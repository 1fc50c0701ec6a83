#include "support/OtherProgram.h"

#include <array>
#include <cstdlib>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam::test {

OtherProgram::OtherProgram()
    : connection_(xcb_connect(nullptr, nullptr)),
      screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data) {}

OtherProgram::~OtherProgram() { xcb_disconnect(connection_); }

xcb_atom_t OtherProgram::atom(const QByteArray& name) const {
  const auto cookie =
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.constData());
  return xcbReply(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
}

xcb_window_t OtherProgram::window(const QRect& place, std::uint32_t colour) {
  const auto window = xcb_generate_id(connection_);
  const std::array<std::uint32_t, 2> values{colour, 1};
  xcb_create_window(
      connection_, XCB_COPY_FROM_PARENT, window, root(), static_cast<std::int16_t>(place.x()),
      static_cast<std::int16_t>(place.y()), static_cast<std::uint16_t>(place.width()),
      static_cast<std::uint16_t>(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
  xcb_map_window(connection_, window);
  roundTrip();
  return window;
}

xcb_window_t OtherProgram::own(const QByteArray& selection) {
  const auto window = xcb_generate_id(connection_);
  xcb_create_window(connection_, 0, window, root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    screen_->root_visual, 0, nullptr);
  xcb_set_selection_owner(connection_, window, atom(selection), XCB_CURRENT_TIME);
  roundTrip();
  return window;
}

void OtherProgram::announce(const QByteArray& selection, xcb_window_t owner) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = root();
  event.type = atom("MANAGER");
  event.data.data32[1] = atom(selection);
  event.data.data32[2] = owner;
  xcb_send_event(connection_, 0, root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&event));
  roundTrip();
}

void OtherProgram::set(xcb_window_t window, const QByteArray& property, xcb_atom_t type,
                       const std::vector<std::uint32_t>& values) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
  roundTrip();
}

void OtherProgram::setBytes(xcb_window_t window, const QByteArray& property,
                            const std::vector<std::uint8_t>& bytes) {
  const auto name = atom(property);
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, name, name, 8,
                      static_cast<std::uint32_t>(bytes.size()), bytes.data());
  roundTrip();
}

void OtherProgram::destroy(xcb_window_t window) {
  xcb_destroy_window(connection_, window);
  roundTrip();
}

void OtherProgram::roundTrip() const {
  std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

}  // namespace tollbeam::test
