#include "platform/freedesktop/power/readings/UPowerReading.h"

#include <gtest/gtest.h>

#include <limits>

namespace tollbeam {
namespace {

// As UPower 0.99.20 answers for its display device on a laptop with one pack.
UPowerAnswer laptopOnBattery() {
  return {{{"NativePath", ""},
           {"Vendor", ""},
           {"Model", ""},
           {"Serial", ""},
           {"UpdateTime", std::uint64_t{1795257420}},
           {"Type", 2},
           {"PowerSupply", true},
           {"HasHistory", false},
           {"Online", false},
           {"Energy", 40.0},
           {"EnergyFull", 50.0},
           {"EnergyRate", 10.0},
           {"TimeToEmpty", 14400},
           {"TimeToFull", 0},
           {"Percentage", 80.0},
           {"Temperature", 0.0},
           {"IsPresent", true},
           {"State", 2},
           {"WarningLevel", 1},
           {"IconName", "battery-full-symbolic"}},
          true};
}

UPowerAnswer with(const char* key, Value value) {
  auto answer = laptopOnBattery();
  answer.device.insert_or_assign(key, std::move(value));
  return answer;
}

TEST(UPowerReading, ReadsALaptopOnBattery) {
  const auto reading = readUPower(laptopOnBattery());
  ASSERT_TRUE(reading);
  EXPECT_EQ(reading->type, "InternalBattery");
  EXPECT_EQ(reading->name, "");
  EXPECT_EQ(reading->percent, 80.0);
  EXPECT_EQ(reading->state, ChargeState::discharging);
  EXPECT_FALSE(reading->onExternalPower);
  EXPECT_EQ(reading->minutesToEmpty, 240);
  EXPECT_EQ(reading->minutesToFull, std::nullopt);
}

TEST(UPowerReading, TakesExternalPowerFromTheManager) {
  auto answer = laptopOnBattery();
  answer.onBattery = false;
  EXPECT_TRUE(readUPower(answer)->onExternalPower);
}

TEST(UPowerReading, KnowsEveryState) {
  const auto stateOf = [](int state) { return readUPower(with("State", state))->state; };
  EXPECT_EQ(stateOf(0), ChargeState::unknown);
  EXPECT_EQ(stateOf(1), ChargeState::charging);
  EXPECT_EQ(stateOf(2), ChargeState::discharging);
  EXPECT_EQ(stateOf(3), ChargeState::unknown);
  EXPECT_EQ(stateOf(4), ChargeState::full);
  EXPECT_EQ(stateOf(5), ChargeState::notCharging);
  EXPECT_EQ(stateOf(6), ChargeState::notCharging);
  EXPECT_EQ(stateOf(7), ChargeState::unknown);
}

TEST(UPowerReading, AnEmptyBatteryIsAReading) {
  auto answer = with("Percentage", 0.0);
  EXPECT_FALSE(isGlitch(*readUPower(answer)));
  answer.device.insert_or_assign("State", 5);
  EXPECT_FALSE(isGlitch(*readUPower(answer)));
}

// UPower 0.99 and 1.90 say "empty" (3) when the kernel says "Unknown" and 0 %.
TEST(UPowerReading, UnknownOrGuessedEmptyAtZeroIsAGlitch) {
  for (const int state : {0, 3}) {
    auto answer = with("State", state);
    answer.device.insert_or_assign("Percentage", 0.0);
    EXPECT_TRUE(isGlitch(*readUPower(answer)));
  }
}

TEST(UPowerReading, AnUnreadableChargeIsAGlitchWhateverTheState) {
  EXPECT_TRUE(isGlitch(*readUPower(with("Percentage", "80"))));
  EXPECT_TRUE(isGlitch(*readUPower(with("Percentage", std::numeric_limits<double>::quiet_NaN()))));
  EXPECT_TRUE(isGlitch(*readUPower(with("Percentage", -1.0))));
  auto answer = laptopOnBattery();
  answer.device.erase("Percentage");
  EXPECT_TRUE(isGlitch(*readUPower(answer)));
}

TEST(UPowerReading, MinutesAreWholeAndZeroSecondsAreNoEstimate) {
  EXPECT_EQ(readUPower(with("TimeToFull", 3659))->minutesToFull, 60);
  EXPECT_EQ(readUPower(with("TimeToFull", 59))->minutesToFull, 0);
  EXPECT_EQ(readUPower(with("TimeToFull", -60))->minutesToFull, std::nullopt);
  EXPECT_EQ(readUPower(with("TimeToEmpty", 0))->minutesToEmpty, std::nullopt);
  EXPECT_EQ(readUPower(with("TimeToEmpty", true))->minutesToEmpty, std::nullopt);
}

TEST(UPowerReading, LeavesAbsurdEstimatesOut) {
  EXPECT_EQ(readUPower(with("TimeToFull", 20 * 3600))->minutesToFull, 20 * 60);
  EXPECT_EQ(readUPower(with("TimeToEmpty", 240 * 3600))->minutesToEmpty, 240 * 60);
  for (const Value& seconds :
       {Value(240 * 3600 + 60), Value(std::numeric_limits<std::int64_t>::max()),
        Value(std::numeric_limits<std::int64_t>::min()),
        Value(std::numeric_limits<std::uint64_t>::max()), Value(1e300),
        Value(std::numeric_limits<double>::quiet_NaN())}) {
    EXPECT_EQ(readUPower(with("TimeToFull", seconds))->minutesToFull, std::nullopt);
    EXPECT_EQ(readUPower(with("TimeToEmpty", seconds))->minutesToEmpty, std::nullopt);
  }
}

TEST(UPowerReading, ARemovedBatteryIsNoSource) {
  auto removed = with("Type", 0);
  removed.device.insert_or_assign("IsPresent", false);
  removed.device.insert_or_assign("Percentage", 0.0);
  EXPECT_FALSE(readUPower(removed));
  EXPECT_FALSE(readUPower(with("Type", 0)));
  EXPECT_FALSE(readUPower(with("IsPresent", false)));
  EXPECT_FALSE(readUPower({}));
}

TEST(UPowerReading, AnUninterruptibleSupplyKeepsItsKind) {
  EXPECT_EQ(readUPower(with("Type", 3))->type, "UPS");
  EXPECT_EQ(readUPower(with("Type", 5))->type, "Unknown");
}

TEST(UPowerReading, TakesTheNameOfTheDevice) {
  EXPECT_EQ(readUPower(with("Model", "Back-UPS ES 700G"))->name, "Back-UPS ES 700G");
}

}  // namespace
}  // namespace tollbeam
