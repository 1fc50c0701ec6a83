#include "model/AppModel.h"

#include <gtest/gtest.h>

#include <random>

#include "recorded/RecordedPlatform.h"
#include "support/ModelPorts.h"

namespace tollbeam {
namespace {

using Reason = AppModel::Reason;
using Identifiers = std::vector<std::string>;

constexpr Date kStart{1'700'000'000};
constexpr const char* kFile = "/support/Tollbeam/history.json";

class AppModelTest : public testing::Test {
 protected:
  void power(int percent, bool pluggedIn, bool charging = false) {
    platform.powerSources.table =
        List{Dictionary{{"Type", "InternalBattery"},
                        {"Current Capacity", percent},
                        {"Max Capacity", 100},
                        {"Is Charging", charging},
                        {"Power Source State", pluggedIn ? "AC Power" : "Battery Power"}}};
  }
  void onBattery(int percent) { power(percent, false); }
  void pluggedInAt(int percent) { power(percent, true); }

  AppModel& created() { return model.emplace(test::modelPorts(platform)); }
  AppModel& started() {
    created().start();
    return *model;
  }
  void fallAsleep(double seconds) {
    platform.workspace.willSleep.notify();
    platform.clock.sleep(seconds);
  }
  void event() { platform.powerSources.changes.notify(); }

  Identifiers posted() const {
    Identifiers identifiers;
    for (const auto& request : platform.notificationCenter.posted) {
      identifiers.push_back(request.identifier);
    }
    return identifiers;
  }
  std::size_t samples() { return model->history().samples().size(); }

  RecordedPlatform platform{kStart};
  std::optional<AppModel> model;
};

TEST_F(AppModelTest, ReadsNothingFromTheBatteryBeforeItStarts) {
  onBattery(50);
  created();
  EXPECT_EQ(model->state(), BatteryState{});
  EXPECT_FALSE(model->pluggedSince());
  EXPECT_EQ(model->historyVersion(), 0);
  EXPECT_EQ(samples(), 0U);
}

TEST_F(AppModelTest, ShowsAStoredSnoozeFromTheStart) {
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 60);
  EXPECT_EQ(created().snoozeUntil(), kStart + 60);
  platform.clock.set(kStart + 60);
  EXPECT_FALSE(created().snoozeUntil());
}

TEST_F(AppModelTest, StartRegistersNotificationsAndRefreshesOnce) {
  onBattery(50);
  started();
  EXPECT_EQ(platform.notificationCenter.categories.size(), 1U);
  EXPECT_EQ(model->state().percent, 50);
  EXPECT_EQ(model->historyVersion(), 1);
  EXPECT_EQ(samples(), 1U);
}

TEST_F(AppModelTest, RefreshesEverySixtySeconds) {
  onBattery(50);
  started();
  platform.mainQueue.advance(59.5);
  EXPECT_EQ(model->historyVersion(), 1);
  platform.mainQueue.advance(0.5);
  EXPECT_EQ(model->historyVersion(), 2);
  platform.mainQueue.advance(3600);
  EXPECT_EQ(model->historyVersion(), 62);
  EXPECT_EQ(samples(), 62U) << "the timer forces a sample each time";
}

TEST_F(AppModelTest, RefreshesOnPowerAndLowPowerModeChanges) {
  onBattery(50);
  started();
  onBattery(49);
  event();
  EXPECT_EQ(model->state().percent, 49);
  platform.processInfo.lowPowerMode = true;
  platform.processInfo.changes.notify();
  EXPECT_TRUE(model->state().lowPowerMode);
  EXPECT_EQ(model->historyVersion(), 3);
  EXPECT_EQ(samples(), 2U) << "an event stores only what moved";
}

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

TEST_F(AppModelTest, LaunchWhilePluggedInTakesTheHistorysEstimate) {
  platform.fileManager.files[kFile] =
      R"([{"t":1699999200,"p":80,"c":false,"a":true},{"t":1699999900,"p":80,"c":false,"a":true}])";
  pluggedInAt(80);
  started();
  EXPECT_EQ(model->pluggedSince(), Date{1699999200});
}

TEST_F(AppModelTest, LaunchWithoutAnEstimateCountsFromNow) {
  pluggedInAt(80);
  EXPECT_EQ(started().pluggedSince(), kStart);
}

TEST_F(AppModelTest, PluggingInWhileRunningCountsFromThatRefresh) {
  // The launch sees no battery, so the history's own run stays the last thing that it knows.
  platform.fileManager.files[kFile] = R"([{"t":1699999990,"p":80,"c":false,"a":true}])";
  started();
  EXPECT_FALSE(model->pluggedSince());
  platform.clock.set(kStart + 10);
  pluggedInAt(50);
  event();
  EXPECT_EQ(model->pluggedSince(), kStart + 10);
  platform.mainQueue.advance(600);
  EXPECT_EQ(model->pluggedSince(), kStart + 10);
}

TEST_F(AppModelTest, UnpluggingEndsTheCountAndPluggingInStartsANewOne) {
  pluggedInAt(50);
  started();
  onBattery(50);
  event();
  EXPECT_FALSE(model->pluggedSince());
  platform.clock.set(kStart + 99);
  pluggedInAt(50);
  event();
  EXPECT_EQ(model->pluggedSince(), kStart + 99);
  platform.powerSources.table.reset();
  event();
  EXPECT_FALSE(model->pluggedSince()) << "no battery";
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

TEST_F(AppModelTest, ALaunchStoresASampleEvenWhenNothingMoved) {
  platform.fileManager.files[kFile] = R"([{"t":1699999990,"p":50,"c":false,"a":false}])";
  onBattery(50);
  started();
  EXPECT_EQ(samples(), 2U);
}

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

TEST_F(AppModelTest, PublishesOnlyRealChanges) {
  onBattery(50);
  started();
  Identifiers order;
  QObject::connect(&*model, &AppModel::pluggedSinceChanged, &*model,
                   [&] { order.emplace_back("pluggedSince"); });
  QObject::connect(&*model, &AppModel::stateChanged, &*model, [&] { order.emplace_back("state"); });
  QObject::connect(&*model, &AppModel::historyVersionChanged, &*model,
                   [&] { order.emplace_back("historyVersion"); });
  event();
  EXPECT_EQ(order, Identifiers{"historyVersion"});
  order.clear();
  pluggedInAt(50);
  event();
  EXPECT_EQ(order, (Identifiers{"pluggedSince", "state", "historyVersion"}));
}

TEST_F(AppModelTest, PublishesTheStateBeforeTheHistory) {
  onBattery(50);
  started();
  std::size_t whenStateChanged = 0;
  std::size_t whenHistoryChanged = 0;
  QObject::connect(&*model, &AppModel::stateChanged, &*model,
                   [&] { whenStateChanged = samples(); });
  QObject::connect(&*model, &AppModel::historyVersionChanged, &*model,
                   [&] { whenHistoryChanged = samples(); });
  onBattery(49);
  event();
  EXPECT_EQ(whenStateChanged, 1U);
  EXPECT_EQ(whenHistoryChanged, 2U);
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

TEST_F(AppModelTest, ResettingEmptiesTheFileAndBumpsTheVersionAlone) {
  pluggedInAt(50);
  started();
  const BatteryState before = model->state();
  model->resetHistory();
  EXPECT_EQ(samples(), 0U);
  EXPECT_EQ(platform.fileManager.files[kFile], "[]");
  EXPECT_EQ(model->historyVersion(), 2);
  EXPECT_EQ(model->state(), before);
  EXPECT_EQ(model->pluggedSince(), kStart);
}

TEST_F(AppModelTest, ExportsTheHistoryToTheChosenFile) {
  onBattery(50);
  started();
  model->exportHistoryCSV();
  ASSERT_EQ(platform.dialogs.savePanels.size(), 1U);
  EXPECT_EQ(platform.dialogs.savePanels[0].suggestedName, "Tollbeam-history.csv");
  EXPECT_EQ(platform.dialogs.savePanels[0].contentType, "text/csv");
  platform.dialogs.savePanelAnswers[0]("/home/ada/h.csv");
  EXPECT_EQ(platform.fileManager.files["/home/ada/h.csv"],
            "timestamp,percent,charging,plugged_in\n2023-11-14T22:13:20Z,50,false,false\n");
  EXPECT_EQ(platform.fileManager.documents, std::set<std::string>{"/home/ada/h.csv"});
  EXPECT_TRUE(platform.dialogs.errors.empty());
}

TEST_F(AppModelTest, ACancelledExportIsSilent) {
  onBattery(50);
  started();
  const auto files = platform.fileManager.files;
  model->exportHistoryCSV();
  platform.dialogs.savePanelAnswers[0](std::nullopt);
  EXPECT_EQ(platform.fileManager.files, files);
  EXPECT_TRUE(platform.dialogs.errors.empty());
}

TEST_F(AppModelTest, AFailedExportIsShownAndLosesNothing) {
  onBattery(50);
  started();
  model->exportHistoryCSV();
  platform.fileManager.failure = "No space left on device";
  platform.dialogs.savePanelAnswers[0]("/full/h.csv");
  ASSERT_EQ(platform.dialogs.errors.size(), 1U);
  EXPECT_EQ(platform.dialogs.errors[0].first, "The history could not be saved to “/full/h.csv”.");
  EXPECT_EQ(platform.dialogs.errors[0].second, "No space left on device");
  EXPECT_EQ(samples(), 1U);
}

TEST_F(AppModelTest, CallbacksAfterItsEndDoNothing) {
  onBattery(50);
  started();
  model->exportHistoryCSV();
  platform.workspace.didWake.notify();
  const auto delegate = platform.notificationCenter.delegate;
  model.reset();
  platform.dialogs.savePanelAnswers[0]("/late.csv");
  event();
  platform.workspace.willSleep.notify();
  platform.mainQueue.advance(600);
  EXPECT_TRUE(delegate.expired());
  EXPECT_FALSE(platform.fileManager.files.contains("/late.csv"));
}

TEST_F(AppModelTest, ACallbackOnAnotherThreadStopsTheProcess) {
  onBattery(50);
  started();
  EXPECT_DEATH(
      {
        platform.mainQueue.onMainThread = false;
        event();
      },
      "");
}

}  // namespace
}  // namespace tollbeam
