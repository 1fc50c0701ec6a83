#include "platform/freedesktop/SleepHold.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <memory>

#include "platform/recorded/RecordedPlatform.h"
#include "support/PrivateBus.h"

namespace tollbeam {
namespace {

using test::waitFor;

class SleepHoldTest : public testing::Test {
 protected:
  RecordedWorkspace workspace;
  int releases = 0;
  std::unique_ptr<SleepHold> hold = std::make_unique<SleepHold>(workspace, [this] { ++releases; });
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

TEST_F(SleepHoldTest, ASleepSoonAfterAWakeHoldsOn) {
  workspace.didWake.notify();
  workspace.willSleep.notify();
  EXPECT_FALSE(waitFor([this] { return releases > 0; }, 3700));
  EXPECT_TRUE(hold->isHolding());
  workspace.didWake.notify();
  EXPECT_TRUE(waitFor([this] { return releases == 1; }));
}

TEST_F(SleepHoldTest, CountsFromTheLastWake) {
  workspace.didWake.notify();
  QElapsedTimer sinceFirst;
  sinceFirst.start();
  ASSERT_TRUE(waitFor([&] { return sinceFirst.elapsed() > 1000; }));
  workspace.didWake.notify();
  ASSERT_TRUE(waitFor([this] { return releases == 1; }));
  EXPECT_GE(sinceFirst.elapsed(), 4500);
}

TEST_F(SleepHoldTest, MayEndInItsOwnCallback) {
  hold = std::make_unique<SleepHold>(workspace, [this] { hold.reset(); });
  workspace.didWake.notify();
  EXPECT_TRUE(waitFor([this] { return hold == nullptr; }));
  workspace.didWake.notify();
}

}  // namespace
}  // namespace tollbeam
