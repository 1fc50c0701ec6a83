// A system tray as a panel has one, on a connection of its own: it owns the selection and embeds
// every icon that asks. The test chooses its visual, its colours and its behaviour.
#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QSize>
#include <optional>

#include "support/OtherProgram.h"

namespace tollbeam::test {

class FakeTray {
 public:
  struct Behaviour {
    bool alpha = false;
    /// Ignores icons that ask for a place.
    bool deaf = false;
    bool vertical = false;
    /// Gives every icon a square.
    bool square = false;
    int height = 24;
    QColor ground = Qt::white;
    std::optional<QColor> foreground = std::nullopt;
  };

  explicit FakeTray(const Behaviour& behaviour);

  /// Handles the events that have arrived; call it in a waiting condition.
  void pump();

  [[nodiscard]] xcb_window_t icon() const { return icon_; }
  [[nodiscard]] QSize iconSize() const { return iconSize_; }
  /// The icon's present pixels.
  [[nodiscard]] QImage picture() const;
  void setForeground(const QColor& colour);
  /// Gives the icon this size, whatever it asked for.
  void giveIcon(QSize size);
  /// Sends the event of a click in the icon's middle.
  void release(std::uint8_t button, QPoint place);

 private:
  void findVisual();
  void take(xcb_window_t icon);
  void fit();

  Behaviour behaviour_;
  OtherProgram program_;
  xcb_visualid_t visual_;
  std::uint8_t depth_;
  xcb_window_t owner_;
  xcb_window_t icon_ = XCB_WINDOW_NONE;
  QSize iconSize_;
};

}  // namespace tollbeam::test
