#include "platform/freedesktop/appearance/x11/FakeSettingsDaemon.h"

#include <cstdlib>
#include <cstring>
#include <memory>

namespace tollbeam::test {

FakeSettingsDaemon::FakeSettingsDaemon() : connection_(xcb_connect(nullptr, nullptr)) {
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  window_ = xcb_generate_id(connection_);
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen_->root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  const auto selection = atom("_XSETTINGS_S0");
  xcb_set_selection_owner(connection_, window_, selection, XCB_CURRENT_TIME);
  xcb_client_message_event_t news{};
  news.response_type = XCB_CLIENT_MESSAGE;
  news.format = 32;
  news.window = screen_->root;
  news.type = atom("MANAGER");
  news.data.data32[1] = selection;
  news.data.data32[2] = window_;
  xcb_send_event(connection_, 0, screen_->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&news));
  xcb_flush(connection_);
}

FakeSettingsDaemon::~FakeSettingsDaemon() { xcb_disconnect(connection_); }

void FakeSettingsDaemon::publish(const std::vector<std::uint8_t>& settings) {
  const auto name = atom("_XSETTINGS_SETTINGS");
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, name, name, 8,
                      static_cast<std::uint32_t>(settings.size()), settings.data());
  xcb_flush(connection_);
}

xcb_atom_t FakeSettingsDaemon::atom(const char* name) const {
  const auto cookie =
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
      xcb_intern_atom_reply(connection_, cookie, nullptr), &std::free);
  return reply->atom;
}

}  // namespace tollbeam::test
