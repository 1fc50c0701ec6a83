// The X server that Qt is connected to, for what Qt has no functions for: a tray window, the colour
// of a panel, the desktop's settings. There is none on Wayland. Queries wait for the server's
// reply; windows of other programs may vanish at any time, so every result may be absent.
#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QHash>
#include <QPoint>
#include <QRect>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

class QImage;

namespace tollbeam {

/// Owns a reply, an event or an error of xcb, which allocates them with malloc().
template <typename T>
std::unique_ptr<T, decltype(&std::free)> xcbReply(T* reply) {
  return {reply, &std::free};
}

class XServer {
 public:
  /// Absent when the application's windows are not on X.
  [[nodiscard]] static std::optional<XServer> ofApplication();

  [[nodiscard]] xcb_connection_t* connection() const { return connection_; }
  [[nodiscard]] xcb_window_t root() const { return screen_->root; }
  [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
  /// Queried once; copies of this object share the cache.
  [[nodiscard]] xcb_atom_t atom(const QByteArray& name) const;
  /// The selection of this name with the number of the screen appended.
  [[nodiscard]] xcb_atom_t selectionOfScreen(const QByteArray& name) const {
    return atom(name + QByteArray::number(screenNumber_));
  }
  /// None when there is no owner.
  [[nodiscard]] xcb_window_t ownerOf(xcb_atom_t selection) const;
  /// A property of 32-bit numbers; empty when it is absent or of another format.
  [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, xcb_atom_t property) const;
  /// A property of bytes; absent when there is none, or it is of another format or longer than
  /// 4 MiB.
  [[nodiscard]] std::optional<std::vector<std::uint8_t>> bytes(xcb_window_t window,
                                                               xcb_atom_t property) const;
  /// Selects more events of a window and keeps those that Qt has selected.
  void alsoSelect(xcb_window_t window, std::uint32_t events) const;
  /// Bits per pixel of `visual`; 0 when it is unknown.
  [[nodiscard]] std::uint8_t depthOf(xcb_visualid_t visual) const;
  /// The upper left corner of a window on the screen.
  [[nodiscard]] std::optional<QPoint> positionOf(xcb_window_t window) const;
  /// The pixels of a window in `area`; absent when the server cannot read them.
  [[nodiscard]] std::optional<QImage> imageOf(xcb_window_t window, const QRect& area) const;
  /// The pointer's position on the screen.
  [[nodiscard]] QPoint pointer() const;
  /// Ignores the error of a checked request on a window that may be gone.
  void tolerate(xcb_void_cookie_t request) const {
    xcb_discard_reply(connection_, request.sequence);
  }

 private:
  XServer(xcb_connection_t* connection, xcb_screen_t* screen, int number)
      : connection_(connection), screen_(screen), screenNumber_(number) {}

  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
  int screenNumber_;
  std::shared_ptr<QHash<QByteArray, xcb_atom_t>> atoms_ =
      std::make_shared<QHash<QByteArray, xcb_atom_t>>();
};

}  // namespace tollbeam
