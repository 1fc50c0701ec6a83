// A system tray as a panel keeps one, on a connection of its own: it owns the selection and gives
// every icon that asks a socket. What it is like (visual, colours, greed) the test decides.
#pragma once

#include <xcb/xcb.h>

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QSize>
#include <optional>

namespace tollbeam::test {

class FakeTray {
 public:
  struct Ways {
    bool alpha = false;
    /// Takes no notice of icons that ask for a place.
    bool deaf = false;
    bool vertical = false;
    /// Gives every icon a square.
    bool square = false;
    int height = 24;
    QColor ground = Qt::white;
    std::optional<QColor> foreground = std::nullopt;
  };

  explicit FakeTray(const Ways& ways);
  FakeTray(const FakeTray&) = delete;
  FakeTray& operator=(const FakeTray&) = delete;
  ~FakeTray();

  /// Answers what has come in; call it in a waiting condition.
  void pump();

  [[nodiscard]] xcb_window_t icon() const { return icon_; }
  [[nodiscard]] QSize iconSize() const { return iconSize_; }
  /// What the icon shows at present.
  [[nodiscard]] QImage picture() const;
  void setForeground(const QColor& colour);
  /// Gives the icon this size, whatever it wished.
  void giveIcon(QSize size);
  /// As the X server would send it for a click in the icon's middle.
  void release(std::uint8_t button, QPoint place);

 private:
  [[nodiscard]] xcb_atom_t atom(const char* name) const;
  void set(const char* property, const char* type, std::uint32_t length, const void* values);
  void findVisual();
  void take(xcb_window_t icon);
  void fit();

  Ways ways_;
  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
  xcb_visualid_t visual_;
  std::uint8_t depth_;
  xcb_window_t owner_;
  xcb_window_t socket_ = XCB_WINDOW_NONE;
  xcb_window_t icon_ = XCB_WINDOW_NONE;
  QSize iconSize_;
};

}  // namespace tollbeam::test
