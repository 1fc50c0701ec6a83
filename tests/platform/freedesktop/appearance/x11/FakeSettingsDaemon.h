// A settings daemon of an X11 desktop, on a connection of its own: it owns the selection, and what
// it publishes the test decides, damage included.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace tollbeam::test {

class FakeSettingsDaemon {
 public:
  /// Silent until `publish`.
  FakeSettingsDaemon();
  FakeSettingsDaemon(const FakeSettingsDaemon&) = delete;
  FakeSettingsDaemon& operator=(const FakeSettingsDaemon&) = delete;
  ~FakeSettingsDaemon();

  void publish(const std::vector<std::uint8_t>& settings);

 private:
  [[nodiscard]] xcb_atom_t atom(const char* name) const;

  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
  xcb_window_t window_;
};

}  // namespace tollbeam::test
