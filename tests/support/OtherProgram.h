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
  /// The server removes its windows and selections when it has noticed the end of the connection.
  ~OtherProgram();

  [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
  [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
  [[nodiscard]] xcb_window_t root() const { return screen_->root; }
  [[nodiscard]] xcb_atom_t atom(const QByteArray& name) const;

  /// Maps a window of one colour (0xRRGGBB) that no window manager moves.
  xcb_window_t window(const QRect& place, std::uint32_t colour);
  /// Takes a selection for an invisible window, and returns that window.
  xcb_window_t own(const QByteArray& selection);
  /// Announces the owner of the selection on the root window, as managers do.
  void announce(const QByteArray& selection, xcb_window_t owner);
  void set(xcb_window_t window, const QByteArray& property, xcb_atom_t type,
           const std::vector<std::uint32_t>& values);
  /// The property's type has the same name.
  void setBytes(xcb_window_t window, const QByteArray& property,
                const std::vector<std::uint8_t>& bytes);
  void destroy(xcb_window_t window);

  /// Returns when the server has handled all earlier requests.
  void roundTrip() const;

 private:
  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
};

}  // namespace tollbeam::test
