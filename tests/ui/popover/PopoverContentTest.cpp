#include "ui/popover/PopoverContent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "recorded/RecordedPlatform.h"
#include "support/States.h"
#include "ui/shell/BatteryStatus.h"

namespace tollbeam {
namespace {

using namespace Qt::StringLiterals;
using test::chargingAt;
using test::onBattery;
using test::pluggedInAt;
using test::withHealth;

BatteryState withPower(double volts, double amperes) {
  BatteryState state = onBattery(50);
  state.voltage = volts;
  state.amperage = amperes;
  return state;
}

// The only row of a state; an empty one where there is none.
Reading row(const BatteryState& state) {
  const auto rows = readings(state);
  EXPECT_LE(rows.size(), 1U);
  return rows.empty() ? Reading{} : rows[0];
}

TEST(RingTint, IsRedUpTo20WithoutACharger) {
  EXPECT_EQ(ringTint(onBattery(0)), Tint::red);
  EXPECT_EQ(ringTint(onBattery(20)), Tint::red);
  EXPECT_EQ(ringTint(onBattery(21)), Tint::accent);
  EXPECT_EQ(ringTint(onBattery(100)), Tint::accent);
}

TEST(RingTint, IsNeverRedOnTheCharger) {
  EXPECT_EQ(ringTint(pluggedInAt(5)), Tint::accent);
  EXPECT_EQ(ringTint(chargingAt(5)), Tint::green);
}

TEST(RingTint, IsGreenWhenFullOnTheCharger) {
  EXPECT_EQ(ringTint(pluggedInAt(100)), Tint::green);
  EXPECT_EQ(ringTint(pluggedInAt(99)), Tint::accent);
  BatteryState charged = pluggedInAt(98);
  charged.isCharged = true;
  EXPECT_EQ(ringTint(charged), Tint::green);
}

TEST(RingTint, IsRedForALowBatteryWhateverElseTheSourceSays) {
  BatteryState odd = onBattery(20);
  odd.isCharged = true;
  EXPECT_EQ(ringTint(odd), Tint::red);
  odd.percent = 21;
  EXPECT_EQ(ringTint(odd), Tint::green);
}

TEST(CycleTint, WarnsAbove700AndAbove900) {
  EXPECT_EQ(cycleTint(0), Tint::accent);
  EXPECT_EQ(cycleTint(700), Tint::accent);
  EXPECT_EQ(cycleTint(701), Tint::orange);
  EXPECT_EQ(cycleTint(900), Tint::orange);
  EXPECT_EQ(cycleTint(901), Tint::red);
  EXPECT_EQ(cycleTint(1500), Tint::red);
}

TEST(CycleText, ShowsCountsAboveTheMaximum) {
  EXPECT_EQ(cycleText(0), u"0 of 1000");
  EXPECT_EQ(cycleText(1500), u"1500 of 1000");
}

TEST(Readings, GradeTheHealth) {
  const auto health = [](std::int64_t full) { return row(withHealth(onBattery(50), full, 1000)); };
  EXPECT_EQ(health(930), (Reading{u"Battery health"_s, u"93% · Good"_s, Ink::green}));
  EXPECT_EQ(health(901), (Reading{u"Battery health"_s, u"90% · Good"_s, Ink::green}));
  EXPECT_EQ(health(900), (Reading{u"Battery health"_s, u"90% · Fair"_s, Ink::orange}));
  EXPECT_EQ(health(800), (Reading{u"Battery health"_s, u"80% · Fair"_s, Ink::orange}));
  EXPECT_EQ(health(799), (Reading{u"Battery health"_s, u"80% · Worn"_s, Ink::red}));
  EXPECT_EQ(health(1040), (Reading{u"Battery health"_s, u"104% · Good"_s, Ink::green}));
}

TEST(Readings, RoundTiesAsTheTooltipDoes) {
  BatteryState state = withHealth(onBattery(50), 825, 1000);
  EXPECT_EQ(row(state).value, u"82% · Fair");
  EXPECT_NE(batteryStatus(state, {}).toolTip.find("Health: 82% (Fair)"), std::string::npos);
  state = onBattery(50);
  state.temperatureC = 30.25;
  EXPECT_EQ(row(state).value, u"30.2 °C");
  EXPECT_EQ(row(withPower(1, 2.25)).value, u"2.2 W");
}

TEST(Readings, NeedBothCapacitiesForTheHealth) {
  BatteryState state = onBattery(50);
  state.fullCapacity = 4000;
  EXPECT_TRUE(readings(state).empty());
  state.designCapacity = 0;
  EXPECT_TRUE(readings(state).empty());
  state.designCapacity = 5000;
  EXPECT_FALSE(readings(state).empty());
  state.fullCapacity.reset();
  EXPECT_TRUE(readings(state).empty());
}

TEST(Readings, GiveTheTemperatureOneDecimal) {
  BatteryState state = onBattery(50);
  state.temperatureC = 31.44;
  EXPECT_EQ(row(state), (Reading{u"Temperature"_s, u"31.4 °C"_s, Ink::secondary}));
  state.temperatureC = -3;
  EXPECT_EQ(row(state).value, u"-3.0 °C");
}

TEST(Readings, LabelThePowerByItsDirection) {
  EXPECT_EQ(row(withPower(12, 2.385)), (Reading{u"Power in"_s, u"28.6 W"_s, Ink::secondary}));
  EXPECT_EQ(row(withPower(12.1, -0.6)), (Reading{u"Power out"_s, u"7.3 W"_s, Ink::secondary}));
}

TEST(Readings, HidePowerBelowATenthOfAWatt) {
  EXPECT_TRUE(readings(withPower(10, -0.005)).empty());
  EXPECT_TRUE(readings(withPower(10, 0)).empty());
  EXPECT_TRUE(readings(withPower(1, 0.0999)).empty());
  EXPECT_EQ(row(withPower(1, 0.1)).value, u"0.1 W");
  EXPECT_TRUE(readings(withPower(10, std::numeric_limits<double>::quiet_NaN())).empty());
}

TEST(Readings, NeedVoltageAndCurrentForThePower) {
  BatteryState state = withPower(12, 1);
  state.amperage.reset();
  EXPECT_TRUE(readings(state).empty());
}

TEST(Readings, ShowTheAdapterOnlyWhilePluggedIn) {
  BatteryState state = onBattery(50);
  state.adapterWatts = 65;
  EXPECT_TRUE(readings(state).empty());
  state.pluggedIn = true;
  EXPECT_EQ(row(state), (Reading{u"Adapter"_s, u"65 W"_s, Ink::secondary}));
}

TEST(Readings, AreInOrder) {
  BatteryState state = withHealth(chargingAt(50), 930, 1000);
  state.temperatureC = 30;
  state.voltage = 12;
  state.amperage = 1;
  state.adapterWatts = 65;
  QStringList labels;
  for (const Reading& reading : readings(state)) labels << reading.label;
  EXPECT_EQ(labels.join(u','), u"Battery health,Temperature,Power in,Adapter");
}

TEST(PluggedInText, CountsWholeMinutes) {
  const Date since{1'700'000'000};
  EXPECT_EQ(pluggedInText(since, since), u"Plugged in for 1 min");
  EXPECT_EQ(pluggedInText(since, since + 119.9), u"Plugged in for 1 min");
  EXPECT_EQ(pluggedInText(since, since + 120), u"Plugged in for 2 min");
  EXPECT_EQ(pluggedInText(since, since + (3 * 60 + 12) * 60), u"Plugged in for 3 h 12 min");
  EXPECT_EQ(pluggedInText(since, since - 3600), u"Plugged in for 1 min");
}

TEST(PluggedInText, BoundsAnyTime) {
  const Date now{1'700'000'000};
  EXPECT_EQ(pluggedInText(Date{1e300}, now), u"Plugged in for 1 min");
  EXPECT_EQ(pluggedInText(Date{-1e300}, now), u"Plugged in for 16666666666 h 40 min");
  EXPECT_EQ(pluggedInText(Date{std::nan("")}, now), u"Plugged in for 1 min");
}

class SnoozeText : public testing::Test {
 protected:
  QString until(double seconds,
                const QLocale& locale = QLocale(QLocale::English, QLocale::UnitedKingdom)) {
    return snoozeText(Date{seconds}, calendar, locale);
  }

  RecordedCalendar calendar;
};

TEST_F(SnoozeText, ShowsTheTimeInTheLocalesFormat) {
  constexpr double kFiveAfterThree = 1'763'651'100;  // 20 November 2025, 15:05 UTC
  EXPECT_EQ(until(kFiveAfterThree), u"Alerts snoozed until 15:05");
  const QString american = until(kFiveAfterThree, QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_TRUE(american.startsWith(u"Alerts snoozed until 3:05")) << american.toStdString();
  EXPECT_TRUE(american.endsWith(u"PM")) << american.toStdString();
  EXPECT_EQ(until(kFiveAfterThree, QLocale(QLocale::German)), u"Alerts snoozed until 15:05");
}

TEST_F(SnoozeText, IsInTheUsersTimeZone) {
  calendar.secondsEastOfUtc = 3600;
  EXPECT_EQ(until(1'763'651'100), u"Alerts snoozed until 16:05");
}

TEST_F(SnoozeText, BoundsADeadlineBeyondTheCalendar) {
  EXPECT_EQ(until(1e300), u"Alerts snoozed until 23:59");
  EXPECT_EQ(until(std::numeric_limits<double>::infinity()), u"Alerts snoozed until 23:59");
}

}  // namespace
}  // namespace tollbeam
