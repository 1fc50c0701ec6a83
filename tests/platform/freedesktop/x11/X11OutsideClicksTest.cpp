#include "platform/freedesktop/x11/X11OutsideClicks.h"

#include <gtest/gtest.h>
#include <xcb/xcbext.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <vector>

#include "support/OtherProgram.h"
#include "support/PrivateBus.h"
#include "support/Sandbox.h"

namespace tollbeam {
namespace {

using Button = OutsideClicks::Button;
using test::waitFor;

// A mouse button, by the X server's own extension for tests, which makes raw events.
class MouseButton {
 public:
  void press() { send(XCB_BUTTON_PRESS); }
  void release() { send(XCB_BUTTON_RELEASE); }

 private:
  struct FakeInput {
    std::uint8_t major, minor;
    std::uint16_t length;
    std::uint8_t type, detail;
    std::array<std::uint8_t, 30> rest;
  };

  void send(std::uint8_t type) {
    static xcb_extension_t extension{"XTEST", 0};
    FakeInput request{.major = 0, .minor = 0, .length = 0, .type = type, .detail = 1, .rest = {}};
    constexpr std::uint8_t kFakeInput = 2;
    const xcb_protocol_request_t protocol{
        .count = 1, .ext = &extension, .opcode = kFakeInput, .isvoid = 1};
    // xcb uses the two places before the first part itself.
    std::array<iovec, 3> parts{};
    parts[2] = {.iov_base = &request, .iov_len = sizeof request};
    xcb_send_request(program_.connection(), 0, &parts[2], &protocol);
    program_.roundTrip();
  }

  test::OtherProgram program_;
};

class X11OutsideClicksTest : public testing::Test {
 protected:
  [[nodiscard]] std::optional<Subscription> observe() {
    return clicks.observe([this](Button button) { seen.push_back(button); });
  }

  X11OutsideClicks clicks;
  MouseButton mouse;
  std::vector<Button> seen;
};

TEST_F(X11OutsideClicksTest, ReportsButtonsWhereverThePointerIs) {
  const auto observation = observe();
  ASSERT_TRUE(observation);
  mouse.press();
  ASSERT_TRUE(waitFor([&] { return seen.size() == 1; }));
  mouse.release();
  ASSERT_TRUE(waitFor([&] { return seen.size() == 2; }));
  EXPECT_EQ(seen, (std::vector{Button::pressed, Button::released}));
}

TEST_F(X11OutsideClicksTest, ReportsButtonsDuringAnotherProgramsGrab) {
  const auto observation = observe();
  ASSERT_TRUE(observation);
  const test::OtherProgram menu;
  const auto cookie = xcb_grab_pointer(menu.connection(), 0, menu.root(),
                                       XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                                       XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
  std::free(xcb_grab_pointer_reply(menu.connection(), cookie, nullptr));
  mouse.press();
  EXPECT_TRUE(waitFor([&] { return seen == std::vector{Button::pressed}; }));
  mouse.release();
  EXPECT_TRUE(waitFor([&] { return seen.size() == 2; }));
}

TEST_F(X11OutsideClicksTest, ReportsNothingAfterTheObservation) {
  auto first = observe();
  std::vector<Button> witness;
  const auto second = clicks.observe([&](Button button) { witness.push_back(button); });
  first.reset();
  mouse.press();
  mouse.release();
  ASSERT_TRUE(waitFor([&] { return witness.size() == 2; }));
  EXPECT_TRUE(seen.empty());
}

TEST_F(X11OutsideClicksTest, CanEndInItsOwnCallback) {
  std::optional<Subscription> observation;
  observation = clicks.observe([&](Button button) {
    seen.push_back(button);
    observation.reset();
  });
  std::vector<Button> witness;
  const auto other = clicks.observe([&](Button button) { witness.push_back(button); });
  mouse.press();
  mouse.release();
  ASSERT_TRUE(waitFor([&] { return witness.size() == 2 && !seen.empty(); }));
  EXPECT_EQ(seen, std::vector{Button::pressed});
}

TEST_F(X11OutsideClicksTest, CannotBeObservedThroughXWayland) {
  const test::Environment wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_FALSE(observe());
}

}  // namespace
}  // namespace tollbeam
