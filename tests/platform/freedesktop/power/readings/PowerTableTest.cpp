#include "platform/freedesktop/power/readings/PowerTable.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

SourceReading discharging(double percent) {
  SourceReading reading;
  reading.percent = percent;
  reading.state = ChargeState::discharging;
  return reading;
}

const Dictionary& only(const List& table) { return *table.at(0).dictionary(); }

TEST(PowerTable, DescribesADischargingBattery) {
  auto reading = discharging(79.6);
  reading.minutesToEmpty = 240;
  const Dictionary expected{
      {"Type", "InternalBattery"}, {"Is Present", true},   {"Current Capacity", 79.6},
      {"Max Capacity", 100},       {"Is Charging", false}, {"Is Charged", false},
      {"Time to Full Charge", -1}, {"Time to Empty", 240}, {"Power Source State", "Battery Power"},
  };
  EXPECT_EQ(powerTable(reading), List{Value(expected)});
}

TEST(PowerTable, DistinguishesChargingChargedAndNeither) {
  auto reading = discharging(80);
  reading.onExternalPower = true;
  struct Case {
    ChargeState state;
    bool charging, charged;
  };
  for (const auto& c :
       {Case{ChargeState::charging, true, false}, Case{ChargeState::full, false, true},
        Case{ChargeState::notCharging, false, false}, Case{ChargeState::unknown, false, false}}) {
    reading.state = c.state;
    const auto table = powerTable(reading);
    EXPECT_EQ(only(table).at("Is Charging"), Value(c.charging));
    EXPECT_EQ(only(table).at("Is Charged"), Value(c.charged));
    EXPECT_EQ(only(table).at("Power Source State"), Value("AC Power"));
  }
}

TEST(PowerTable, NamesTheSourceOnlyWhenItHasAName) {
  auto reading = discharging(80);
  EXPECT_FALSE(only(powerTable(reading)).contains("Name"));
  reading.name = "DELL 70N2F95";
  EXPECT_EQ(only(powerTable(reading)).at("Name"), Value("DELL 70N2F95"));
}

TEST(PowerTable, IsEmptyWithoutASource) {
  EXPECT_TRUE(powerTable(std::nullopt).empty());
  EXPECT_FALSE(hasInternalBattery(powerTable(std::nullopt)));
}

TEST(PowerTable, AnUninterruptibleSupplyIsNoInternalBattery) {
  auto reading = discharging(80);
  EXPECT_TRUE(hasInternalBattery(powerTable(reading)));
  reading.type = "UPS";
  EXPECT_FALSE(hasInternalBattery(powerTable(reading)));
}

TEST(PowerTable, OnlyUnknownAtZeroIsAGlitch) {
  EXPECT_TRUE(isGlitch(SourceReading{}));
  EXPECT_FALSE(isGlitch(discharging(0)));
  auto unknownAtOne = discharging(1);
  unknownAtOne.state = ChargeState::unknown;
  EXPECT_FALSE(isGlitch(unknownAtOne));
}

TEST(PowerTable, TablesWithinOneWholePercentAreEqual) {
  const auto seen = [](double percent) { return inWholePercent(powerTable(discharging(percent))); };
  EXPECT_EQ(seen(79.5), seen(80.49));
  EXPECT_NE(seen(79.49), seen(79.5));
}

TEST(PowerTable, EveryOtherDifferenceCounts) {
  const auto seen = [](const SourceReading& r) { return inWholePercent(powerTable(r)); };
  const auto before = discharging(80);
  auto after = before;
  after.minutesToEmpty = 10;
  EXPECT_NE(seen(before), seen(after));
  after = before;
  after.onExternalPower = true;
  EXPECT_NE(seen(before), seen(after));
  EXPECT_NE(seen(before), List());
}

TEST(PowerTable, RoundingLeavesOtherEntriesUnchanged) {
  const List foreign{Value(7), Value(Dictionary{{"Current Capacity", "many"}})};
  EXPECT_EQ(inWholePercent(foreign), foreign);
}

}  // namespace
}  // namespace tollbeam
