#include "platform/freedesktop/statusbar/xembed/PanelColour.h"

#include <gtest/gtest.h>

#include "support/OtherProgram.h"

namespace tollbeam {
namespace {

// Of the screen's 640 x 480 pixels.
const QRect kTop(0, 0, 640, 24);
const QRect kLeft(0, 100, 40, 300);
constexpr std::uint32_t kDark = 0x202830;
constexpr std::uint32_t kLight = 0xe0e8f0;

class PanelColourTest : public testing::Test {
 protected:
  /// Lists the window as a window manager does.
  xcb_window_t list(xcb_window_t window, const char* type) {
    panels.set(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {panels.atom(type)});
    listed.push_back(window);
    panels.set(panels.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, listed);
    return window;
  }
  xcb_window_t panel(const QRect& place, std::uint32_t colour) {
    return list(panels.window(place, colour), "_NET_WM_WINDOW_TYPE_DOCK");
  }
  ~PanelColourTest() override {
    panels.set(panels.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {});
  }

  /// Compares the upper four bits of each channel.
  static void expectNear(const std::optional<QColor>& colour, std::uint32_t expected) {
    ASSERT_TRUE(colour);
    EXPECT_EQ(colour->rgb() & 0xf0f0f0, expected & 0xf0f0f0) << colour->name().toStdString();
  }

  const XServer server = *XServer::ofApplication();
  test::OtherProgram panels;
  std::vector<std::uint32_t> listed;
};

TEST_F(PanelColourTest, IsAbsentWithoutAPanel) {
  EXPECT_EQ(panelColour(server), std::nullopt);
  list(panels.window(kTop, kDark), "_NET_WM_WINDOW_TYPE_NORMAL");
  EXPECT_EQ(panelColour(server), std::nullopt);
}

TEST_F(PanelColourTest, ComesFromThePanelAtThePlace) {
  panel(kTop, kDark);
  panel(kLeft, kLight);
  expectNear(panelColour(server, QPoint(300, 10)), kDark);
  expectNear(panelColour(server, QPoint(10, 200)), kLight);
  EXPECT_EQ(panelColour(server, QPoint(300, 300)), std::nullopt);
}

TEST_F(PanelColourTest, ComesFromTheLargestPanelWithoutAPlace) {
  panel(kLeft, kLight);
  panel(kTop, kDark);
  expectNear(panelColour(server), kDark);
}

TEST_F(PanelColourTest, IsTheGroundsAndNotThatOfAnIcon) {
  panel(kTop, kDark);
  panels.window({10, 0, 200, 24}, kLight);
  expectNear(panelColour(server), kDark);
}

TEST_F(PanelColourTest, IsAbsentWhereThePanelExtendsBeyondTheScreen) {
  panel({0, 470, 640, 600}, kDark);
  EXPECT_EQ(panelColour(server), std::nullopt);
}

TEST_F(PanelColourTest, IgnoresAPanelThatIsGone) {
  panel(kLeft, kLight);
  panels.destroy(panel(kTop, kDark));
  expectNear(panelColour(server), kLight);
}

}  // namespace
}  // namespace tollbeam
