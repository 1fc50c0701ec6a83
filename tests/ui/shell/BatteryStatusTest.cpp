#include "ui/shell/BatteryStatus.h"

#include <gtest/gtest.h>

#include "support/States.h"

namespace tollbeam {
namespace {

using test::onBattery;
using test::pluggedInAt;
using test::withHealth;

Prefs showing(bool percent, bool time) {
  Prefs prefs;
  prefs.showPercent = percent;
  prefs.showTime = time;
  return prefs;
}

BatteryState onBatteryFor(std::int64_t percent, std::int64_t minutes) {
  BatteryState state = onBattery(percent);
  state.minutesToEmpty = minutes;
  return state;
}

TEST(BatteryStatus, TitleIsASpaceWithPercentTimeOrBoth) {
  const BatteryState state = onBatteryFor(80, 125);
  EXPECT_EQ(batteryStatus(state, showing(true, false)).title, " 80%");
  EXPECT_EQ(batteryStatus(state, showing(false, true)).title, " 2:05");
  EXPECT_EQ(batteryStatus(state, showing(true, true)).title, " 80% · 2:05");
  EXPECT_EQ(batteryStatus(state, showing(false, false)).title, "");
}

TEST(BatteryStatus, TitleOmitsAnUnknownTime) {
  EXPECT_EQ(batteryStatus(pluggedInAt(80), showing(true, true)).title, " 80%");
  EXPECT_EQ(batteryStatus(onBattery(80), showing(false, true)).title, "");
}

TEST(BatteryStatus, TitleIsEmptyWithoutABattery) {
  const auto content = batteryStatus({}, showing(true, true));
  EXPECT_EQ(content.title, "");
  EXPECT_EQ(content.toolTip, "No battery found");
  EXPECT_EQ(content.symbolNames, std::vector<std::string>{"battery.0"});
}

TEST(BatteryStatus, ToolTipHasStateHealthAndCycles) {
  BatteryState state = withHealth(onBatteryFor(64, 227), 4650, 5000);
  EXPECT_EQ(batteryStatus(state, {}).toolTip,
            "64% · On battery, 3 h 47 min left\nHealth: 93% (Good)");
  state.cycleCount = 212;
  EXPECT_EQ(batteryStatus(state, {}).toolTip,
            "64% · On battery, 3 h 47 min left\nHealth: 93% (Good)\nCycles: 212");
}

TEST(BatteryStatus, ToolTipRoundsHealthLikePrintfAndMayExceed100) {
  EXPECT_EQ(batteryStatus(withHealth(onBattery(50), 5400, 5000), {}).toolTip,
            "50% · On battery, estimating time left…\nHealth: 108% (Good)");
  EXPECT_EQ(batteryStatus(withHealth(onBattery(50), 825, 1000), {}).toolTip,
            "50% · On battery, estimating time left…\nHealth: 82% (Fair)")
      << "82.5 goes to the even neighbour";
}

TEST(BatteryStatus, ToolTipOmitsHealthForADesignCapacityOfZero) {
  EXPECT_EQ(batteryStatus(withHealth(onBattery(50), 4000, 0), {}).toolTip,
            "50% · On battery, estimating time left…");
}

TEST(BatteryStatus, ToolTipHasHealthAndCyclesWithoutABattery) {
  BatteryState state = withHealth({}, 4650, 5000);
  state.cycleCount = 3;
  EXPECT_EQ(batteryStatus(state, {}).toolTip, "No battery found\nHealth: 93% (Good)\nCycles: 3");
}

}  // namespace
}  // namespace tollbeam
