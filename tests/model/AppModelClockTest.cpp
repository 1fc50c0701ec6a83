#include "model/AppModelTest.h"

namespace tollbeam {
namespace {

TEST_F(AppModelTest, SettingTheClockMovesThePluggedInTime) {
  platform.clock.set(Date{100});
  pluggedInAt(85);
  started();
  platform.mainQueue.advance(3600);
  platform.clock.step(kStart.secondsSince1970);
  platform.mainQueue.advance(60);
  EXPECT_EQ(model->pluggedSince(), kStart + 100);
  platform.mainQueue.advance(8 * 3600);
  ASSERT_EQ(posted(), Identifiers{"tooLong"});
  EXPECT_EQ(platform.notificationCenter.posted[0].content.body,
            "Plugged in for over 8 h at 85%. Unplug it to let the battery rest.");
}

TEST_F(AppModelTest, SettingTheClockBackDoesNotDelayTheReminders) {
  onBattery(50);
  started();
  pluggedInAt(80);
  event();
  platform.clock.step(-7200);
  platform.mainQueue.advance(240);
  EXPECT_EQ(posted().size(), 1U);
  platform.mainQueue.advance(60);
  EXPECT_EQ(posted(), Identifiers(2, "chargeLimit"));
}

TEST_F(AppModelTest, SettingTheClockAheadDoesNotHurryTheReminders) {
  onBattery(50);
  started();
  pluggedInAt(80);
  event();
  platform.clock.step(7200);
  platform.mainQueue.advance(240);
  EXPECT_EQ(posted().size(), 1U);
  platform.mainQueue.advance(60);
  EXPECT_EQ(posted(), Identifiers(2, "chargeLimit"));
}

TEST_F(AppModelTest, AnHourOfSnoozeStaysAnHourWhenTheClockIsSet) {
  for (const double step : {-7200.0, 7200.0}) {
    RecordedPlatform other{kStart};
    AppModel snoozed(test::modelPorts(other));
    snoozed.start();
    other.mainQueue.advance(600);
    other.clock.step(step);
    // Set before the next refresh has noticed it.
    snoozed.snooze();
    other.mainQueue.advance(1800);
    other.clock.step(step);
    other.mainQueue.advance(1740);
    EXPECT_EQ(snoozed.snoozeUntil(), other.clock.now() + 60);
    other.mainQueue.advance(60);
    EXPECT_FALSE(snoozed.snoozeUntil());
  }
}

TEST_F(AppModelTest, AnExpiredSnoozeDoesNotMoveWithACorrectedClock) {
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 - 86400);
  platform.clock.set(Date{100});
  onBattery(50);
  started();
  EXPECT_TRUE(model->snoozeUntil());
  platform.clock.step(kStart.secondsSince1970);
  onBattery(20);
  platform.mainQueue.advance(60);
  EXPECT_FALSE(model->snoozeUntil());
  EXPECT_EQ(posted(), (Identifiers{"low", "lowPower"}));
}

TEST_F(AppModelTest, ThePluggedInTimeIsNeverAheadOfACorrectedClock) {
  platform.fileManager.files[kFile] = R"([{"t":1699999990,"p":80,"c":false,"a":true}])";
  platform.clock.set(Date{100});
  pluggedInAt(50);
  started();
  platform.clock.step(kStart.secondsSince1970);
  event();
  EXPECT_EQ(model->pluggedSince(), kStart + 100);
}

TEST_F(AppModelTest, ASleepIsNotAStepOfTheClock) {
  pluggedInAt(50);
  started();
  fallAsleep(8 * 3600);
  platform.workspace.didWake.notify();
  platform.mainQueue.advance(3);
  EXPECT_EQ(model->pluggedSince(), kStart);
}

TEST_F(AppModelTest, SettingTheClockBackDoesNotReviveAnExpiredSnooze) {
  onBattery(50);
  started();
  model->snooze();
  platform.mainQueue.advance(4200);
  platform.clock.step(-7200);
  onBattery(15);
  platform.mainQueue.advance(60);
  EXPECT_EQ(posted(), (Identifiers{"low", "lowPower"}));
}

TEST_F(AppModelTest, SettingTheClockBackAtTheEndOfASnoozeDoesNotProlongIt) {
  onBattery(50);
  started();
  platform.mainQueue.advance(30);
  model->snooze();
  platform.mainQueue.advance(3610);
  platform.clock.step(-7200);
  onBattery(15);
  platform.mainQueue.advance(20);
  EXPECT_EQ(posted(), (Identifiers{"low", "lowPower"}));
  EXPECT_FALSE(model->snoozeUntil());
}

TEST_F(AppModelTest, AnEarlierSnoozeSurvivesALaunchWithAWrongClock) {
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 1800);
  platform.clock.set(kStart + 1e8);
  onBattery(50);
  started();
  platform.clock.step(-1e8);
  onBattery(15);
  platform.mainQueue.advance(60);
  EXPECT_EQ(posted(), Identifiers{});
  EXPECT_EQ(model->snoozeUntil(), kStart + 1800);
}

TEST_F(AppModelTest, SettingTheClockBackDoesNotDelayTheNextSave) {
  onBattery(50);
  started();
  platform.clock.step(-7200);
  const int writes = platform.fileManager.writes;
  platform.mainQueue.advance(300);
  EXPECT_EQ(platform.fileManager.writes, writes);
  platform.mainQueue.advance(60);
  EXPECT_EQ(platform.fileManager.writes, writes + 1);
}

}  // namespace
}  // namespace tollbeam
