#include "battery/BatteryState.h"

#include <gtest/gtest.h>

#include "support/States.h"

namespace tollbeam {
namespace {

using test::chargingAt;
using test::onBattery;
using test::pluggedInAt;
using test::withHealth;
using Names = std::vector<std::string>;

TEST(BatteryState, StartsEmpty) {
  const BatteryState empty;
  EXPECT_FALSE(empty.hasBattery);
  EXPECT_EQ(empty.percent, 0);
  EXPECT_FALSE(empty.cycleCount || empty.voltage || empty.minutesToFull || empty.sourceName);
  EXPECT_EQ(empty.stateText(), "No battery found");
  EXPECT_EQ(empty.symbolNames(), Names{"battery.0"});
  EXPECT_FALSE(empty.shortTime());
  EXPECT_FALSE(empty.healthLabel());
}

TEST(BatteryState, KeepsAbsentApartFromZero) {
  BatteryState known = onBattery(50);
  known.minutesToEmpty = 0;
  EXPECT_NE(known, onBattery(50));
}

TEST(BatteryState, ChoosesTheHigherSymbolAtEachEdge) {
  EXPECT_EQ(onBattery(100).symbolNames(), Names{"battery.100"});
  EXPECT_EQ(onBattery(88).symbolNames(), Names{"battery.100"});
  EXPECT_EQ(onBattery(87).symbolNames(), Names{"battery.75"});
  EXPECT_EQ(onBattery(63).symbolNames(), Names{"battery.75"});
  EXPECT_EQ(onBattery(62).symbolNames(), Names{"battery.50"});
  EXPECT_EQ(onBattery(38).symbolNames(), Names{"battery.50"});
  EXPECT_EQ(onBattery(37).symbolNames(), Names{"battery.25"});
  EXPECT_EQ(onBattery(13).symbolNames(), Names{"battery.25"});
  EXPECT_EQ(onBattery(12).symbolNames(), Names{"battery.0"});
}

TEST(BatteryState, IsFullAtRestOnTheChargerAt100AndIdleAt99) {
  EXPECT_EQ(pluggedInAt(100).stateText(), "Fully charged");
  EXPECT_EQ(pluggedInAt(100).symbolNames(), (Names{"battery.100percent", "battery.100"}));
  EXPECT_EQ(pluggedInAt(99).stateText(), "Plugged in, not charging");
  EXPECT_EQ(pluggedInAt(99).symbolNames(), (Names{"powerplug.fill", "powerplug"}));
}

TEST(BatteryState, IsFullWhenTheSourceSaysSo) {
  BatteryState state = onBattery(97);
  state.isCharged = true;
  EXPECT_EQ(state.stateText(), "Fully charged");
  EXPECT_EQ(state.symbolNames(), (Names{"battery.100percent", "battery.100"}));
  state.minutesToEmpty = 30;
  EXPECT_FALSE(state.shortTime());
}

TEST(BatteryState, ChargesWhetherOrNotPluggedIn) {
  BatteryState state = onBattery(40);
  state.isCharging = true;
  EXPECT_EQ(state.symbolNames(), (Names{"battery.100.bolt", "bolt.fill"}));
  EXPECT_EQ(state.stateText(), "Charging, estimating time to full…");
  state.minutesToFull = 125;
  state.minutesToEmpty = 7;
  EXPECT_EQ(state.stateText(), "Charging, 2 h 5 min to full");
  EXPECT_EQ(state.shortTime(), "2:05");
  state.pluggedIn = true;
  EXPECT_EQ(state.shortTime(), "2:05");
  EXPECT_EQ(state.stateText(), "Charging, 2 h 5 min to full");
}

TEST(BatteryState, ChargingAt100IsStillCharging) {
  EXPECT_EQ(chargingAt(100).stateText(), "Charging, estimating time to full…");
  EXPECT_EQ(chargingAt(100).symbolNames(), (Names{"battery.100.bolt", "bolt.fill"}));
}

TEST(BatteryState, ShowsTheTimeLeftOnBattery) {
  BatteryState state = onBattery(40);
  EXPECT_EQ(state.stateText(), "On battery, estimating time left…");
  EXPECT_FALSE(state.shortTime());
  state.minutesToEmpty = 45;
  EXPECT_EQ(state.stateText(), "On battery, 45 min left");
  EXPECT_EQ(state.shortTime(), "0:45");
  state.minutesToEmpty = 0;
  EXPECT_EQ(state.stateText(), "On battery, 1 min left");
  EXPECT_EQ(state.shortTime(), "0:00");
}

TEST(BatteryState, HasNoShortTimeWhileIdleOnTheCharger) {
  BatteryState state = pluggedInAt(80);
  state.minutesToFull = 10;
  state.minutesToEmpty = 10;
  EXPECT_FALSE(state.shortTime());
}

TEST(BatteryState, GradesHealth) {
  EXPECT_EQ(withHealth({}, 4501, 5000).healthLabel(), "Good");
  EXPECT_EQ(withHealth({}, 4500, 5000).healthLabel(), "Fair");
  EXPECT_EQ(withHealth({}, 4000, 5000).healthLabel(), "Fair");
  EXPECT_EQ(withHealth({}, 3999, 5000).healthLabel(), "Worn");
  EXPECT_EQ(withHealth({}, 5200, 5000).healthLabel(), "Good");
  EXPECT_EQ(withHealth({}, 1, 1).healthLabel(), "Good");
}

TEST(BatteryState, HasNoHealthWithoutBothCapacities) {
  EXPECT_FALSE(withHealth({}, 4500, 0).healthLabel());
  BatteryState fullOnly;
  fullOnly.fullCapacity = 4500;
  EXPECT_FALSE(fullOnly.healthLabel());
  BatteryState designOnly;
  designOnly.designCapacity = 5000;
  EXPECT_FALSE(designOnly.healthLabel());
}

}  // namespace
}  // namespace tollbeam
