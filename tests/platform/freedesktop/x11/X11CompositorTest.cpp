#include "platform/freedesktop/x11/X11Compositor.h"

#include <gtest/gtest.h>
#include <xcb/shape.h>
#include <xcb/xcb.h>

#include <QRect>
#include <QWindow>
#include <vector>

#include "platform/freedesktop/x11/XServer.h"
#include "support/OtherProgram.h"

namespace tollbeam {
namespace {

using test::OtherProgram;

std::vector<std::uint32_t> numbers(const OtherProgram& program, WId window, const char* property) {
  auto* c = program.connection();
  const auto cookie = xcb_get_property(c, 0, static_cast<xcb_window_t>(window),
                                       program.atom(property), XCB_ATOM_CARDINAL, 0, 16);
  const auto reply = xcbReply(xcb_get_property_reply(c, cookie, nullptr));
  const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + reply->value_len};
}

// The parts of the window that take clicks.
std::vector<QRect> input(const OtherProgram& program, WId window) {
  auto* c = program.connection();
  const auto cookie =
      xcb_shape_get_rectangles(c, static_cast<xcb_window_t>(window), XCB_SHAPE_SK_INPUT);
  const auto reply = xcbReply(xcb_shape_get_rectangles_reply(c, cookie, nullptr));
  std::vector<QRect> result;
  const auto* parts = xcb_shape_get_rectangles_rectangles(reply.get());
  for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
    result.emplace_back(parts[i].x, parts[i].y, parts[i].width, parts[i].height);
  }
  return result;
}

TEST(X11Compositor, IsRunningWhileItsSelectionHasAnOwner) {
  const X11Compositor compositor;
  EXPECT_FALSE(compositor.isRunning());
  {
    OtherProgram manager;
    manager.own("_NET_WM_CM_S0");
    EXPECT_TRUE(compositor.isRunning());
  }
  // The server removes its windows when it has noticed the end of the connection.
  for (int i = 0; i < 1000 && compositor.isRunning(); ++i) OtherProgram().roundTrip();
  EXPECT_FALSE(compositor.isRunning());
}

TEST(X11Compositor, IgnoresTheSelectionOfAnotherScreen) {
  OtherProgram manager;
  manager.own("_NET_WM_CM_S7");
  EXPECT_FALSE(X11Compositor().isRunning());
}

class X11CompositorShadow : public testing::Test {
 protected:
  X11CompositorShadow() {
    window.setGeometry(0, 0, 376, 590);
    window.create();
  }
  void set(const WindowShadow& shadow) {
    compositor.setShadow(window.winId(), shadow);
    // A reply on the program's own connection shows that the server has handled the requests
    // before.
    (void)compositor.isRunning();
  }

  QWindow window;
  X11Compositor compositor;
  OtherProgram other;
};

TEST_F(X11CompositorShadow, IsAnnouncedToTheWindowManagerAndTakesNoClicks) {
  set({.left = 28, .top = 8, .right = 10, .bottom = 38, .bodyWidth = 338, .bodyHeight = 544});
  EXPECT_EQ(numbers(other, window.winId(), "_GTK_FRAME_EXTENTS"),
            (std::vector<std::uint32_t>{28, 10, 8, 38}));
  EXPECT_EQ(input(other, window.winId()), (std::vector<QRect>{{28, 8, 338, 544}}));
}

TEST_F(X11CompositorShadow, IsRemovedWithoutATrace) {
  set({.left = 28, .top = 8, .right = 10, .bottom = 38, .bodyWidth = 338, .bodyHeight = 544});
  set({.bodyWidth = 376, .bodyHeight = 590});
  EXPECT_TRUE(numbers(other, window.winId(), "_GTK_FRAME_EXTENTS").empty());
  EXPECT_EQ(input(other, window.winId()), (std::vector<QRect>{{0, 0, 376, 590}}));
}

TEST_F(X11CompositorShadow, IgnoresAWindowThatIsGone) {
  const WId gone = window.winId();
  window.destroy();
  compositor.setShadow(gone, {.left = 1, .bodyWidth = 10, .bodyHeight = 10});
  EXPECT_FALSE(compositor.isRunning());
}

}  // namespace
}  // namespace tollbeam
