#include "model/AppModelTest.h"

#include <random>

namespace tollbeam {
namespace {

using Reason = AppModel::Reason;

TEST_F(AppModelTest, SavesBeforeSleepWithoutARefresh) {
  onBattery(50);
  started();
  platform.mainQueue.advance(60);
  const int writes = platform.fileManager.writes;
  platform.workspace.willSleep.notify();
  EXPECT_EQ(platform.fileManager.writes, writes + 1);
  EXPECT_EQ(model->historyVersion(), 2);
}

TEST_F(AppModelTest, RefreshesThreeSecondsAfterAWake) {
  onBattery(50);
  started();
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(2.9);
  EXPECT_EQ(model->historyVersion(), 1);
  platform.mainQueue.advance(0.1);
  EXPECT_EQ(model->historyVersion(), 2);
  EXPECT_EQ(samples(), 2U);
}

TEST_F(AppModelTest, AWakeTakesTheEstimate) {
  platform.fileManager.files[kFile] = R"([{"t":1699999990,"p":80,"c":false,"a":true}])";
  started();
  pluggedInAt(50);
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(3);
  EXPECT_EQ(model->pluggedSince(), Date{1699999990});
}

TEST_F(AppModelTest, AWakeWithoutAnEstimateCountsFromNow) {
  onBattery(50);
  started();
  pluggedInAt(50);
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(3);
  EXPECT_EQ(model->pluggedSince(), kStart + 3) << "the last sample was not plugged in";
}

TEST_F(AppModelTest, LaunchAndWakeNeverDeliver) {
  onBattery(5);
  started();
  EXPECT_EQ(posted(), Identifiers{});
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(3);
  EXPECT_EQ(posted(), Identifiers{});
  platform.mainQueue.advance(3600);
  EXPECT_EQ(posted(), Identifiers{}) << "known since the launch";
}

TEST_F(AppModelTest, AWakeAbsorbsConditionsThatBeganDuringTheSleep) {
  onBattery(50);
  started();
  onBattery(5);
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(3600);
  EXPECT_EQ(posted(), Identifiers{});
}

TEST_F(AppModelTest, ATickBeforeTheWakeRefreshWaitsForIt) {
  onBattery(50);
  started();
  platform.mainQueue.advance(59);
  fallAsleep(3600);
  onBattery(5);
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(2.9);
  EXPECT_EQ(model->historyVersion(), 1);
  platform.mainQueue.advance(0.1);
  EXPECT_EQ(model->historyVersion(), 3) << "the wake refresh, then the tick";
  platform.mainQueue.advance(3600);
  EXPECT_EQ(posted(), Identifiers{});
}

TEST_F(AppModelTest, ATickBetweenTheMachinesWakeAndItsAnnouncementWaits) {
  onBattery(50);
  started();
  platform.mainQueue.advance(59);
  fallAsleep(3600);
  onBattery(5);
  platform.mainQueue.advance(5);
  EXPECT_EQ(posted(), Identifiers{});
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(3600);
  EXPECT_EQ(posted(), Identifiers{});
}

TEST_F(AppModelTest, TheRefreshAfterTheLastOfTwoWakesLetsTicksThrough) {
  onBattery(50);
  started();
  platform.mainQueue.advance(56);
  fallAsleep(3600);
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(2);
  fallAsleep(3600);
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(1.5);
  // The first wake's refresh was at 59, and the tick is due at 60.
  onBattery(5);
  platform.mainQueue.advance(1);
  EXPECT_EQ(posted(), Identifiers{});
  platform.mainQueue.advance(3600);
  EXPECT_EQ(posted(), Identifiers{});
}

TEST_F(AppModelTest, ACancelledSleepHoldsTicksForOnlyAMinute) {
  onBattery(50);
  started();
  platform.workspace.willSleep.notify();
  onBattery(20);
  platform.mainQueue.advance(59);
  EXPECT_EQ(posted(), Identifiers{});
  platform.mainQueue.advance(61);
  EXPECT_EQ(posted(), (Identifiers{"low", "lowPower"}));
}

TEST_F(AppModelTest, AWakeAnnouncesNothingAtAnyPhaseOfTheTimer) {
  std::mt19937 random(20261121);
  std::uniform_real_distribution<double> seconds(0, 60);
  std::uniform_real_distribution<double> moment(0, 4);
  onBattery(50);
  started();
  for (int i = 0; i < 2000; ++i) {
    // Between two sleeps all is well, so that every kind of alert is armed anew.
    onBattery(50);
    event();
    platform.mainQueue.advance(seconds(random));
    platform.workspace.willSleep.notify();
    platform.mainQueue.advance(moment(random));
    platform.clock.sleep(3600);
    if (i % 2) {
      onBattery(5);
    } else {
      pluggedInAt(90);
    }
    platform.mainQueue.advance(moment(random));
    platform.workspace.didWake.notify();
    if (i % 3 == 0) {
      platform.mainQueue.advance(moment(random));
      platform.workspace.didWake.notify();
    }
    platform.mainQueue.advance(3 + seconds(random));
    ASSERT_EQ(posted(), Identifiers{}) << "sleep " << i;
  }
  const std::size_t before = samples();
  platform.mainQueue.advance(600);
  EXPECT_EQ(samples(), before + 10) << "ticks go on";
}

TEST_F(AppModelTest, AWakeWithdrawsAlertsWhoseConditionEndedDuringTheSleep) {
  onBattery(50);
  started();
  onBattery(20);
  event();
  pluggedInAt(20);
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(3);
  EXPECT_EQ(platform.notificationCenter.removed, (Identifiers{"low", "lowPower"}));
}

TEST_F(AppModelTest, AWakeLeavesAnExpiredSnoozeOnShow) {
  onBattery(50);
  started();
  model->snooze();
  platform.clock.set(kStart + 3600);
  model->refresh(Reason::wake);
  EXPECT_TRUE(model->snoozeUntil());
  model->refresh(Reason::event);
  EXPECT_FALSE(model->snoozeUntil());
}

}  // namespace
}  // namespace tollbeam
