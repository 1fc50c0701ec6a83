// Another program on the same X server, on a connection of its own.
#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QRect>
#include <cstdint>
#include <vector>

namespace tollbeam::test {

class OtherProgram {
 public:
  OtherProgram();
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;
  /// The server takes its windows and selections away when it has seen it go.
  ~OtherProgram();

  [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
  [[nodiscard]] xcb_window_t root() const { return screen_->root; }
  [[nodiscard]] xcb_atom_t atom(const QByteArray& name) const;

  /// A window of one colour (0xRRGGBB) that no window manager moves, on the screen.
  xcb_window_t window(const QRect& place, std::uint32_t colour);
  /// Takes a selection for a window that nobody sees, and returns that window.
  xcb_window_t own(const QByteArray& selection);
  /// Says on the root window who owns the selection, as managers do.
  void announce(const QByteArray& selection, xcb_window_t owner);
  void set(xcb_window_t window, const QByteArray& property, xcb_atom_t type,
           const std::vector<std::uint32_t>& values);
  void destroy(xcb_window_t window);

  /// What was asked of the server before this call is done when it returns.
  void roundTrip() const;

 private:
  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
};

}  // namespace tollbeam::test
