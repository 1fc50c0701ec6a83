#include "model/AppModelTest.h"

namespace tollbeam {
namespace {

TEST_F(AppModelTest, TheFirstEventAfterALaunchCanDeliver) {
  onBattery(50);
  started();
  onBattery(20);
  event();
  EXPECT_EQ(posted(), (Identifiers{"low", "lowPower"}));
}

TEST_F(AppModelTest, PostsTitleBodyCategoryAndSound) {
  platform.userDefaults.set("limitSound", "Glass");
  onBattery(50);
  started();
  pluggedInAt(83);
  event();
  ASSERT_EQ(posted(), Identifiers{"chargeLimit"});
  EXPECT_EQ(platform.notificationCenter.posted[0].content,
            (NotificationContent{.title = "Charge limit reached",
                                 .body = "Battery is at 83%. Unplug to keep it healthy.",
                                 .categoryIdentifier = "TB_ALERT",
                                 .sound = NotificationSound{"Glass"}}));
}

TEST_F(AppModelTest, NoneIsSilentAndDefaultIsTheDesktopsOwn) {
  platform.userDefaults.set("lowSound", "none");
  onBattery(50);
  started();
  onBattery(20);
  event();
  ASSERT_EQ(posted().size(), 2U);
  EXPECT_FALSE(platform.notificationCenter.posted[0].content.sound);
  EXPECT_EQ(platform.notificationCenter.posted[1].content.sound, NotificationSound{});
}

TEST_F(AppModelTest, OutsideABundleNothingIsPosted) {
  platform.mainBundle.extension = "";
  onBattery(50);
  started();
  onBattery(5);
  event();
  EXPECT_EQ(posted(), Identifiers{});
  platform.mainBundle.extension = "app";
  platform.mainQueue.advance(120);
  EXPECT_EQ(posted(), Identifiers{}) << "dropped, not kept for later";
}

TEST_F(AppModelTest, ABundleWithoutAnIdentifierPostsNothing) {
  platform.mainBundle.id.reset();
  onBattery(50);
  started();
  onBattery(5);
  event();
  EXPECT_EQ(posted(), Identifiers{});
}

TEST_F(AppModelTest, WithdrawsTheChargeLimitWhenUnplugged) {
  onBattery(50);
  started();
  pluggedInAt(90);
  event();
  EXPECT_EQ(platform.notificationCenter.removed, Identifiers{});
  onBattery(90);
  event();
  EXPECT_EQ(platform.notificationCenter.removed, Identifiers{"chargeLimit"});
}

TEST_F(AppModelTest, RepeatsTheChargeLimitUnderOneIdentifier) {
  onBattery(50);
  started();
  pluggedInAt(80);
  event();
  platform.mainQueue.advance(3600);
  EXPECT_EQ(posted(), Identifiers(4, "chargeLimit"));
}

TEST_F(AppModelTest, ASnoozeHoldsAlertsForOneHour) {
  onBattery(50);
  started();
  model->snooze();
  EXPECT_EQ(model->snoozeUntil(), kStart + 3600);
  EXPECT_EQ(model->historyVersion(), 1) << "the next refresh sees it; none is run";
  onBattery(10);
  event();
  platform.mainQueue.advance(3599);
  EXPECT_EQ(posted(), Identifiers{});
  EXPECT_TRUE(model->snoozeUntil());
  platform.mainQueue.advance(1);
  EXPECT_EQ(posted(), (Identifiers{"low", "lowPower"}));
  EXPECT_FALSE(model->snoozeUntil());
  EXPECT_EQ(platform.userDefaults.values.at("snoozeUntil").number(), kStart.secondsSince1970 + 3600)
      << "left as it is, expired";
}

TEST_F(AppModelTest, TheSnoozeActionSnoozes) {
  onBattery(50);
  started();
  const auto delegate = platform.notificationCenter.delegate.lock();
  ASSERT_TRUE(delegate);
  delegate->didReceiveNotificationResponse("SNOOZE", [] {});
  EXPECT_FALSE(model->snoozeUntil());
  platform.mainQueue.drain();
  EXPECT_EQ(model->snoozeUntil(), kStart + 3600);
}

TEST_F(AppModelTest, ASnoozeWithdrawsTheShownAlerts) {
  onBattery(50);
  started();
  onBattery(20);
  event();
  ASSERT_EQ(posted(), (Identifiers{"low", "lowPower"}));
  model->snooze();
  EXPECT_EQ(platform.notificationCenter.removed, (Identifiers{"low", "lowPower"}));
  platform.mainQueue.advance(7200);
  EXPECT_EQ(posted().size(), 2U) << "they were sent";
}

TEST_F(AppModelTest, SnoozingTwiceCountsFromTheSecond) {
  started();
  model->snooze();
  int changes = 0;
  QObject::connect(&*model, &AppModel::snoozeUntilChanged, &*model, [&] { ++changes; });
  model->snooze();
  EXPECT_EQ(changes, 1) << "published even when the deadline is the same";
  platform.clock.set(kStart + 100);
  model->snooze();
  EXPECT_EQ(model->snoozeUntil(), kStart + 3700);
}

TEST_F(AppModelTest, CancellingASnoozeClearsWhatIsStored) {
  started();
  model->snooze();
  model->cancelSnooze();
  EXPECT_FALSE(model->snoozeUntil());
  EXPECT_EQ(platform.userDefaults.values.at("snoozeUntil"), Value(std::int64_t{0}));
}

TEST_F(AppModelTest, QuietHoursHoldAlertsUntilTheyEnd) {
  platform.userDefaults.set("quietEnabled", true);  // 22:00 to 07:00; kStart is 22:13:20 UTC
  onBattery(50);
  started();
  onBattery(20);
  event();
  EXPECT_EQ(posted(), Identifiers{});
  platform.mainQueue.advance(8.5 * 3600);
  EXPECT_EQ(posted(), Identifiers{});
  platform.mainQueue.advance(20 * 60);
  EXPECT_EQ(posted(), (Identifiers{"low", "lowPower"}));
}

TEST_F(AppModelTest, QuietHoursDoNotKeepAnExpiredSnoozeOnShow) {
  platform.userDefaults.set("quietEnabled", true);
  onBattery(50);
  started();
  model->snooze();
  platform.mainQueue.advance(3600);
  EXPECT_FALSE(model->snoozeUntil());
}

TEST_F(AppModelTest, ASettingCountsFromTheNextRefresh) {
  onBattery(50);
  started();
  platform.userDefaults.set("low", std::int64_t{50});
  EXPECT_EQ(posted(), Identifiers{});
  platform.mainQueue.advance(60);
  EXPECT_EQ(posted(), Identifiers{"low"});
}

TEST_F(AppModelTest, WithdrawsAnAlertWhenItsConditionHasGone) {
  onBattery(50);
  started();
  onBattery(20);
  event();
  EXPECT_EQ(platform.notificationCenter.removed, Identifiers{});
  pluggedInAt(20);
  event();
  EXPECT_EQ(platform.notificationCenter.removed, (Identifiers{"low", "lowPower"}));
  event();
  EXPECT_EQ(platform.notificationCenter.removed.size(), 2U) << "once";
}

TEST_F(AppModelTest, EveryKindHasItsOwnSound) {
  platform.userDefaults.set("lowSound", "Basso");
  platform.userDefaults.set("lowPowerSound", "Tink");
  onBattery(50);
  started();
  onBattery(20);
  event();
  ASSERT_EQ(posted(), (Identifiers{"low", "lowPower"}));
  EXPECT_EQ(platform.notificationCenter.posted[0].content.sound, NotificationSound{"Basso"});
  EXPECT_EQ(platform.notificationCenter.posted[1].content.sound, NotificationSound{"Tink"});
}

}  // namespace
}  // namespace tollbeam
