#include "alerts/AlertEngine.h"

#include <gtest/gtest.h>

#include "recorded/RecordedPlatform.h"
#include "support/States.h"

namespace tollbeam {
namespace {

using test::onBattery;
using test::pluggedInAt;
using test::withHealth;
using Alerts = std::vector<PendingAlert>;

constexpr Date kStart{1'700'000'000};

class AlertEngineTest : public testing::Test {
 protected:
  Alerts run(const BatteryState& state, double seconds = 0) {
    return engine.run(state, since, kStart + seconds, prefs, true, false, store);
  }
  Alerts hold(const BatteryState& state, double seconds = 0) {
    return engine.run(state, since, kStart + seconds, prefs, false, false, store);
  }
  Alerts prime(const BatteryState& state, double seconds = 0) {
    return engine.run(state, since, kStart + seconds, prefs, false, true, store);
  }
  bool healthAlertSent() const { return store.boolForKey("healthAlertSent"); }

  RecordedUserDefaults store;
  Prefs prefs = Prefs::current(store);
  AlertEngine engine;
  std::optional<Date> since;
};

Alerts chargeLimit(int percent) {
  return {{AlertKind::chargeLimit, "Charge limit reached",
           "Battery is at " + std::to_string(percent) + "%. Unplug to keep it healthy."}};
}
Alerts low(int percent) {
  return {{AlertKind::low, "Low battery",
           "Battery is at " + std::to_string(percent) + "%. Plug in soon."}};
}

TEST_F(AlertEngineTest, StartsArmed) {
  EXPECT_TRUE(engine.suppressed.empty());
  EXPECT_EQ(engine.chargeSent, 0);
  EXPECT_EQ(engine.chargeLast, Date::distantPast());
  EXPECT_FALSE(engine.lowSent || engine.longSent || engine.lowPowerSent);
}

TEST_F(AlertEngineTest, RemindsAtTheChargeLimitAndNotBelow) {
  EXPECT_EQ(run(pluggedInAt(79)), Alerts{});
  EXPECT_EQ(run(pluggedInAt(80)), chargeLimit(80));
  EXPECT_EQ(run(onBattery(100)), Alerts{});
}

TEST_F(AlertEngineTest, RemindsAgainOnlyAfter290Seconds) {
  EXPECT_EQ(run(pluggedInAt(80), 0), chargeLimit(80));
  EXPECT_EQ(run(pluggedInAt(81), 289), Alerts{});
  EXPECT_EQ(run(pluggedInAt(82), 290), chargeLimit(82));
}

TEST_F(AlertEngineTest, RemindsAtMostFourTimesAnEpisode) {
  int sent = 0;
  for (int minute = 0; minute < 600; ++minute) {
    sent += static_cast<int>(run(pluggedInAt(90), minute * 60).size());
  }
  EXPECT_EQ(sent, 4);
  EXPECT_EQ(run(onBattery(90), 36000), Alerts{});
  EXPECT_EQ(run(pluggedInAt(90), 36060), chargeLimit(90));
}

TEST_F(AlertEngineTest, RemindsOnceWithoutRepeat) {
  prefs.repeatReminder = false;
  EXPECT_EQ(run(pluggedInAt(90), 0), chargeLimit(90));
  EXPECT_EQ(run(pluggedInAt(90), 3600), Alerts{});
}

TEST_F(AlertEngineTest, TurningRepeatOnContinuesTheCount) {
  prefs.repeatReminder = false;
  EXPECT_EQ(run(pluggedInAt(90), 0), chargeLimit(90));
  prefs.repeatReminder = true;
  EXPECT_EQ(run(pluggedInAt(90), 300), chargeLimit(90));
  EXPECT_EQ(engine.chargeSent, 2);
}

TEST_F(AlertEngineTest, FallingBelowTheLimitOnTheChargerRearms) {
  EXPECT_EQ(run(pluggedInAt(80), 0), chargeLimit(80));
  EXPECT_EQ(run(pluggedInAt(79), 10), Alerts{});
  EXPECT_EQ(run(pluggedInAt(80), 20), chargeLimit(80)) << "a new episode needs no spacing";
}

TEST_F(AlertEngineTest, WarnsOfLowBatteryAtTheThresholdOnceAnEpisode) {
  EXPECT_EQ(run(onBattery(31)), Alerts{});
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(run(onBattery(21)), Alerts{});
  EXPECT_EQ(run(onBattery(20)), low(20));
  EXPECT_EQ(run(onBattery(15)), Alerts{});
  EXPECT_EQ(run(pluggedInAt(15)), Alerts{});
  EXPECT_EQ(run(onBattery(16)), low(16));
}

TEST_F(AlertEngineTest, NeverWarnsOfLowBatteryOnTheCharger) {
  EXPECT_EQ(run(pluggedInAt(1)), Alerts{});
}

TEST_F(AlertEngineTest, SuggestsLowPowerModeStrictlyBelowItsThreshold) {
  EXPECT_EQ(run(onBattery(30)), Alerts{});
  EXPECT_EQ(run(onBattery(29)),
            (Alerts{{AlertKind::lowPower, "Try Low Power Mode",
                     "Battery is at 29%. Turn on Low Power Mode (System Settings, Battery) to "
                     "stretch it."}}));
  EXPECT_EQ(run(onBattery(28)), Alerts{});
}

TEST_F(AlertEngineTest, LowPowerModeSilencesAndRearmsTheSuggestion) {
  BatteryState saving = onBattery(25);
  saving.lowPowerMode = true;
  EXPECT_EQ(run(saving), Alerts{});
  EXPECT_EQ(run(onBattery(25)).size(), 1U);
  EXPECT_EQ(run(saving), Alerts{});
  EXPECT_EQ(run(onBattery(25)).size(), 1U);
}

TEST_F(AlertEngineTest, RemindsOfALongTimeOnlyAfterMoreThanTheHours) {
  prefs.limitEnabled = false;
  since = kStart;
  EXPECT_EQ(run(pluggedInAt(80), 8 * 3600), Alerts{});
  EXPECT_EQ(run(pluggedInAt(85), 8 * 3600 + 1),
            (Alerts{{AlertKind::tooLong, "Plugged in for a long time",
                     "Plugged in for over 8 h at 85%. Unplug it to let the battery rest."}}));
  EXPECT_EQ(run(pluggedInAt(85), 9 * 3600), Alerts{});
}

TEST_F(AlertEngineTest, ALongTimeCountsOnlyAtTheLimitAndWithAKnownStart) {
  prefs.limitEnabled = false;
  EXPECT_EQ(run(pluggedInAt(100), 1e6), Alerts{});
  since = kStart;
  EXPECT_EQ(run(pluggedInAt(79), 1e6), Alerts{});
  EXPECT_EQ(run(pluggedInAt(80), 100.5 * 3600).at(0).body,
            "Plugged in for over 100 h at 80%. Unplug it to let the battery rest.");
}

TEST_F(AlertEngineTest, PrimingAbsorbsWhatAlreadyHolds) {
  EXPECT_EQ(prime(pluggedInAt(90)), Alerts{});
  EXPECT_EQ(run(pluggedInAt(91), 60), Alerts{});
  EXPECT_EQ(run(pluggedInAt(95), 6000), Alerts{});
  EXPECT_EQ(run(onBattery(95), 6060), Alerts{});
  EXPECT_EQ(run(pluggedInAt(95), 6120), chargeLimit(95));
}

TEST_F(AlertEngineTest, PrimingDoesNotAbsorbWhatDoesNotHoldYet) {
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(prime(onBattery(50)), Alerts{});
  EXPECT_EQ(run(onBattery(20), 60), low(20));
}

TEST_F(AlertEngineTest, AnAlertThatMayNotBeDeliveredWaits) {
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(hold(onBattery(20)), Alerts{});
  EXPECT_FALSE(engine.lowSent);
  EXPECT_EQ(run(onBattery(19), 60), low(19));
}

TEST_F(AlertEngineTest, RearmsWhileNothingMayBeDelivered) {
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(run(onBattery(20)), low(20));
  EXPECT_EQ(hold(pluggedInAt(20), 60), Alerts{});
  EXPECT_EQ(run(onBattery(20), 120), low(20));
}

TEST_F(AlertEngineTest, SwitchingAnAlertOffRearmsIt) {
  prefs.lowPowerEnabled = false;
  EXPECT_EQ(run(onBattery(20)), low(20));
  prefs.lowEnabled = false;
  EXPECT_EQ(run(onBattery(19), 60), Alerts{});
  prefs.lowEnabled = true;
  EXPECT_EQ(run(onBattery(18), 120), low(18));
}

TEST_F(AlertEngineTest, LosingTheBatteryForgetsAllButTheLastReminder) {
  EXPECT_EQ(run(pluggedInAt(80), 5), chargeLimit(80));
  EXPECT_EQ(prime(onBattery(10), 10), Alerts{});
  engine.lowSent = engine.longSent = engine.lowPowerSent = true;
  engine.chargeSent = 3;
  EXPECT_EQ(run(BatteryState{}, 20), Alerts{});
  AlertEngine expected;
  expected.chargeLast = kStart + 5;
  EXPECT_EQ(engine, expected);
}

TEST_F(AlertEngineTest, WithoutABatteryHealthIsNotJudged) {
  EXPECT_EQ(run(withHealth(BatteryState{}, 3000, 5000)), Alerts{});
  EXPECT_FALSE(healthAlertSent());
}

TEST_F(AlertEngineTest, AnnouncesWornHealthOnceWithTheRoundedPercent) {
  EXPECT_EQ(run(withHealth(onBattery(50), 3975, 5000)),
            (Alerts{{AlertKind::health, "Battery health is low",
                     "Battery health has fallen to 80% of its original capacity."}}));
  EXPECT_TRUE(healthAlertSent());
  EXPECT_EQ(run(withHealth(onBattery(50), 3000, 5000), 60), Alerts{});
}

TEST_F(AlertEngineTest, HealthRearmsFrom82Percent) {
  store.set("healthAlertSent", true);
  EXPECT_EQ(run(withHealth(onBattery(50), 4050, 5000)), Alerts{});
  EXPECT_TRUE(healthAlertSent());
  EXPECT_EQ(run(withHealth(onBattery(50), 4100, 5000)), Alerts{});
  EXPECT_FALSE(healthAlertSent());
  EXPECT_EQ(run(withHealth(onBattery(50), 3999, 5000)).size(), 1U);
}

TEST_F(AlertEngineTest, HealthAt80IsNotWorn) {
  EXPECT_EQ(run(withHealth(onBattery(50), 4000, 5000)), Alerts{});
  EXPECT_FALSE(healthAlertSent());
}

TEST_F(AlertEngineTest, PrimingRemembersWornHealthEvenWhenTheAlertIsOff) {
  prefs.healthEnabled = false;
  EXPECT_EQ(prime(withHealth(onBattery(50), 3000, 5000)), Alerts{});
  EXPECT_TRUE(healthAlertSent());
}

TEST_F(AlertEngineTest, HealthThatMayNotBeAnnouncedIsNotRemembered) {
  EXPECT_EQ(hold(withHealth(onBattery(50), 3000, 5000)), Alerts{});
  EXPECT_FALSE(healthAlertSent());
  prefs.healthEnabled = false;
  EXPECT_EQ(run(withHealth(onBattery(50), 3000, 5000)), Alerts{});
  EXPECT_FALSE(healthAlertSent());
  prefs.healthEnabled = true;
  EXPECT_EQ(run(withHealth(onBattery(50), 3000, 5000)).size(), 1U);
}

TEST_F(AlertEngineTest, HealthRearmsWhileNothingMayBeDelivered) {
  store.set("healthAlertSent", true);
  EXPECT_EQ(hold(withHealth(onBattery(50), 4500, 5000)), Alerts{});
  EXPECT_FALSE(healthAlertSent());
}

TEST_F(AlertEngineTest, UnknownCapacitiesRaiseNoHealthAlert) {
  store.set("healthAlertSent", true);
  BatteryState state = onBattery(50);
  EXPECT_EQ(run(state), Alerts{});
  EXPECT_EQ(run(withHealth(state, 100, 0)), Alerts{});
  EXPECT_TRUE(healthAlertSent());
}

TEST_F(AlertEngineTest, PostsInAFixedOrder) {
  since = kStart;
  std::vector<AlertKind> kinds;
  for (const auto& alert : run(withHealth(pluggedInAt(90), 3000, 5000), 9 * 3600)) {
    kinds.push_back(alert.kind);
  }
  EXPECT_EQ(kinds, (std::vector{AlertKind::chargeLimit, AlertKind::tooLong, AlertKind::health}));
  kinds.clear();
  store.set("healthAlertSent", false);
  for (const auto& alert : run(withHealth(onBattery(9), 3000, 5000), 10 * 3600)) {
    kinds.push_back(alert.kind);
  }
  EXPECT_EQ(kinds, (std::vector{AlertKind::low, AlertKind::lowPower, AlertKind::health}));
}

TEST_F(AlertEngineTest, ReportsWhichEpisodesAreOngoing) {
  EXPECT_FALSE(engine.isOngoing(AlertKind::low));
  EXPECT_FALSE(engine.isOngoing(AlertKind::chargeLimit));
  EXPECT_EQ(run(pluggedInAt(90)).size(), 1U);
  EXPECT_TRUE(engine.isOngoing(AlertKind::chargeLimit));
  EXPECT_EQ(run(onBattery(10)).size(), 2U);
  EXPECT_FALSE(engine.isOngoing(AlertKind::chargeLimit));
  EXPECT_TRUE(engine.isOngoing(AlertKind::low));
  EXPECT_TRUE(engine.isOngoing(AlertKind::lowPower));
  EXPECT_EQ(run(pluggedInAt(10)).size(), 0U);
  EXPECT_FALSE(engine.isOngoing(AlertKind::low));
  EXPECT_TRUE(engine.isOngoing(AlertKind::health));
}

TEST(AlertEngineDeathTest, AbortsOnAnInfiniteTimeOnTheCharger) {
  RecordedUserDefaults store;
  Prefs prefs = Prefs::current(store);
  AlertEngine engine;
  EXPECT_DEATH((void)engine.run(pluggedInAt(90), Date{-1e300}, kStart, prefs, true, false, store),
               "");
}

TEST(AlertKind, RawValuesAreTheNames) {
  const std::vector<std::string> names = {"chargeLimit", "low", "tooLong", "health", "lowPower"};
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(rawValue(kAllAlertKinds[i]), names[i]);
  }
}

}  // namespace
}  // namespace tollbeam
