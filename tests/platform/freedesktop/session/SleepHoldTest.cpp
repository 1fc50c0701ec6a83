#include "platform/freedesktop/session/SleepHold.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <memory>
#include <optional>

#include "recorded/RecordedPlatform.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::waitFor;

class SleepHoldTest : public testing::Test {
 protected:
  RecordedWorkspace workspace;
  int releases = 0;
  std::unique_ptr<SleepHold> hold = std::make_unique<SleepHold>(workspace);
  Subscription released = hold->onRelease([this] { ++releases; });

  /// Another hold to compare with: timers fire in the order in which they are due, however busy the
  /// machine is.
  RecordedWorkspace otherWorkspace;
  std::optional<int> releasesAtOtherEnd;
  SleepHold other{otherWorkspace};
  Subscription otherReleased = other.onRelease([this] { releasesAtOtherEnd = releases; });
};

TEST_F(SleepHoldTest, HoldsFromTheSleepUntilThreeAndAHalfSecondsAfterTheWake) {
  EXPECT_FALSE(hold->isHolding());
  workspace.willSleep.notify();
  EXPECT_TRUE(hold->isHolding());
  QElapsedTimer sinceWake;
  sinceWake.start();
  workspace.didWake.notify();
  EXPECT_TRUE(hold->isHolding());
  ASSERT_TRUE(waitFor([this] { return !hold->isHolding(); }));
  EXPECT_GE(sinceWake.elapsed(), 3500);
  EXPECT_EQ(releases, 1);
}

TEST_F(SleepHoldTest, ASleepSoonAfterAWakeExtendsTheHold) {
  workspace.didWake.notify();
  workspace.willSleep.notify();
  otherWorkspace.didWake.notify();
  ASSERT_TRUE(waitFor([this] { return releasesAtOtherEnd.has_value(); }));
  EXPECT_EQ(releasesAtOtherEnd, 0);
  EXPECT_TRUE(hold->isHolding());
  workspace.didWake.notify();
  EXPECT_TRUE(waitFor([this] { return releases == 1; }));
}

TEST_F(SleepHoldTest, CountsFromTheLastWake) {
  workspace.didWake.notify();
  otherWorkspace.didWake.notify();
  workspace.didWake.notify();
  ASSERT_TRUE(waitFor([this] { return releases == 1; }));
  EXPECT_EQ(releasesAtOtherEnd, 0);
}

TEST_F(SleepHoldTest, MayBeDestroyedInItsOwnCallback) {
  released = hold->onRelease([this] { hold.reset(); });
  workspace.didWake.notify();
  EXPECT_TRUE(waitFor([this] { return hold == nullptr; }));
  workspace.didWake.notify();
}

}  // namespace
}  // namespace tollbeam
