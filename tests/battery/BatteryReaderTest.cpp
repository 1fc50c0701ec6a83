#include "battery/BatteryReader.h"

#include <gtest/gtest.h>

#include <limits>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

Dictionary internalBattery(double current = 80, double max = 100) {
  return {{"Type", "InternalBattery"}, {"Current Capacity", current}, {"Max Capacity", max}};
}

class BatteryReaderTest : public testing::Test {
 protected:
  BatteryState readSource(Dictionary source) {
    sources.table = List{std::move(source)};
    return reader.read();
  }
  BatteryState readProperties(Dictionary properties) {
    sources.table = List{internalBattery()};
    sources.properties = std::move(properties);
    return reader.read();
  }

  RecordedPowerSources sources;
  RecordedProcessInfo processInfo;
  BatteryReader reader{sources, processInfo};
};

TEST_F(BatteryReaderTest, WithoutABatteryOnlyLowPowerModeIsFilled) {
  BatteryState expected;
  expected.lowPowerMode = true;
  processInfo.lowPowerMode = true;
  sources.properties = Dictionary{{"CycleCount", 5}};
  EXPECT_EQ(reader.read(), expected);
  sources.table = List{};
  EXPECT_EQ(reader.read(), expected);
  EXPECT_EQ(readSource({{"Type", "AC"}, {"Current Capacity", 1}, {"Max Capacity", 1}}), expected);
  EXPECT_EQ(sources.smartBatteryReads, 0);
}

TEST_F(BatteryReaderTest, TakesTheFirstInternalBatteryOfTheTable) {
  Dictionary ups = internalBattery(10);
  ups.insert_or_assign("Type", "UPS");
  sources.table = List{Value("no dictionary"), ups, internalBattery(70), internalBattery(20)};
  EXPECT_EQ(reader.read().percent, 70);
}

TEST_F(BatteryReaderTest, SkipsSourcesThatAreNotInternalBatteries) {
  Dictionary untyped = internalBattery();
  untyped.erase("Type");
  EXPECT_FALSE(readSource(untyped).hasBattery);
  Dictionary numbered = internalBattery();
  numbered.insert_or_assign("Type", 1);
  EXPECT_FALSE(readSource(numbered).hasBattery);
}

TEST_F(BatteryReaderTest, SkipsABatteryThatIsNotPresent) {
  Dictionary source = internalBattery();
  source.insert_or_assign("Is Present", false);
  EXPECT_FALSE(readSource(source).hasBattery);
  source.insert_or_assign("Is Present", 0);
  EXPECT_TRUE(readSource(source).hasBattery) << "a number is no flag";
}

TEST_F(BatteryReaderTest, SkipsABatteryWithoutReadableCapacities) {
  EXPECT_FALSE(readSource(internalBattery(50, 0)).hasBattery);
  EXPECT_FALSE(readSource(internalBattery(50, -1)).hasBattery);
  EXPECT_FALSE(
      readSource(internalBattery(50, std::numeric_limits<double>::quiet_NaN())).hasBattery);
  EXPECT_FALSE(readSource(internalBattery(std::numeric_limits<double>::quiet_NaN())).hasBattery);
  for (const char* key : {"Current Capacity", "Max Capacity"}) {
    Dictionary source = internalBattery();
    source.insert_or_assign(key, "50");
    EXPECT_FALSE(readSource(source).hasBattery);
    source.insert_or_assign(key, true);
    EXPECT_FALSE(readSource(source).hasBattery);
    source.erase(key);
    EXPECT_FALSE(readSource(source).hasBattery);
  }
}

TEST_F(BatteryReaderTest, RoundsPercentHalfAwayFromZeroAndClampsIt) {
  EXPECT_EQ(readSource(internalBattery(50, 80)).percent, 63);
  EXPECT_EQ(readSource(internalBattery(49.9, 80)).percent, 62);
  EXPECT_EQ(readSource(internalBattery(120, 100)).percent, 100);
  EXPECT_EQ(readSource(internalBattery(-5, 100)).percent, 0);
  EXPECT_EQ(readSource(internalBattery(1e308, 1e-300)).percent, 100);
  EXPECT_EQ(
      readSource({{"Type", "InternalBattery"}, {"Current Capacity", 4000}, {"Max Capacity", 5000}})
          .percent,
      80);
}

TEST_F(BatteryReaderTest, ReadsFlagsOnlyFromFlags) {
  Dictionary source = internalBattery();
  source.insert_or_assign("Is Charging", true);
  source.insert_or_assign("Is Charged", true);
  BatteryState state = readSource(source);
  EXPECT_TRUE(state.isCharging && state.isCharged);
  source.insert_or_assign("Is Charging", 1);
  source.insert_or_assign("Is Charged", "true");
  state = readSource(source);
  EXPECT_FALSE(state.isCharging || state.isCharged);
}

TEST_F(BatteryReaderTest, IsPluggedInExactlyOnAcPower) {
  Dictionary source = internalBattery();
  EXPECT_FALSE(readSource(source).pluggedIn);
  source.insert_or_assign("Power Source State", "AC Power");
  EXPECT_TRUE(readSource(source).pluggedIn);
  for (const Value& other : {Value("Battery Power"), Value("ac power"), Value(true)}) {
    source.insert_or_assign("Power Source State", other);
    EXPECT_FALSE(readSource(source).pluggedIn);
  }
}

TEST_F(BatteryReaderTest, ReadsTheName) {
  Dictionary source = internalBattery();
  source.insert_or_assign("Name", "BAT0");
  EXPECT_EQ(readSource(source).sourceName, "BAT0");
  source.insert_or_assign("Name", 7);
  EXPECT_FALSE(readSource(source).sourceName);
}

TEST_F(BatteryReaderTest, NegativeEstimatesAreAbsent) {
  Dictionary source = internalBattery();
  source.insert_or_assign("Time to Empty", -1);
  source.insert_or_assign("Time to Full Charge", -1);
  BatteryState state = readSource(source);
  EXPECT_FALSE(state.minutesToEmpty || state.minutesToFull);
  EXPECT_EQ(state.stateText(), "On battery, estimating time left…");
  source.insert_or_assign("Time to Empty", 0);
  source.insert_or_assign("Time to Full Charge", 12.9);
  state = readSource(source);
  EXPECT_EQ(state.minutesToEmpty, 0);
  EXPECT_EQ(state.minutesToFull, 12);
  source.insert_or_assign("Time to Empty", -0.5);
  EXPECT_EQ(readSource(source).minutesToEmpty, 0) << "cut off first, then tested";
}

TEST_F(BatteryReaderTest, ReadsTheSmartBatteryOnlyWithABattery) {
  EXPECT_EQ(readProperties({{"CycleCount", 212}}).cycleCount, 212);
  sources.properties.reset();
  EXPECT_FALSE(reader.read().cycleCount);
  EXPECT_TRUE(reader.read().hasBattery);
}

TEST_F(BatteryReaderTest, ReadsCyclesFromZeroUp) {
  EXPECT_EQ(readProperties({{"CycleCount", 0}}).cycleCount, 0);
  EXPECT_FALSE(readProperties({{"CycleCount", -1}}).cycleCount);
  EXPECT_FALSE(readProperties({{"CycleCount", "212"}}).cycleCount);
  EXPECT_FALSE(readProperties({{"CycleCount", std::uint64_t{1} << 63}}).cycleCount);
}

TEST_F(BatteryReaderTest, TakesTheFirstPlausibleFullCapacity) {
  EXPECT_EQ(readProperties({{"DesignCapacity", 5000},
                            {"AppleRawMaxCapacity", 100},
                            {"NominalChargeCapacity", 4200},
                            {"MaxCapacity", 4300}})
                .fullCapacity,
            4200);
  EXPECT_EQ(readProperties(
                {{"DesignCapacity", 5000}, {"AppleRawMaxCapacity", "4700"}, {"MaxCapacity", 4300}})
                .fullCapacity,
            4300);
  const BatteryState none = readProperties({{"DesignCapacity", 5000},
                                            {"AppleRawMaxCapacity", 1499},
                                            {"NominalChargeCapacity", 6501},
                                            {"MaxCapacity", 100}});
  EXPECT_EQ(none.designCapacity, 5000);
  EXPECT_FALSE(none.fullCapacity);
}

TEST_F(BatteryReaderTest, AcceptsBothBoundsOfAPlausibleFullCapacity) {
  for (const int capacity : {1500, 6500}) {
    EXPECT_EQ(readProperties({{"DesignCapacity", 5000}, {"MaxCapacity", capacity}}).fullCapacity,
              capacity);
  }
}

TEST_F(BatteryReaderTest, HasNoFullCapacityWithoutADesignCapacity) {
  for (const int design : {0, -5}) {
    const BatteryState state =
        readProperties({{"DesignCapacity", design}, {"AppleRawMaxCapacity", 4200}});
    EXPECT_FALSE(state.designCapacity || state.fullCapacity);
  }
  EXPECT_FALSE(readProperties({{"AppleRawMaxCapacity", 4200}}).fullCapacity);
}

TEST_F(BatteryReaderTest, ReadsTheTemperatureWithinItsOpenRange) {
  EXPECT_EQ(readProperties({{"Temperature", 3050}}).temperatureC, 30.5);
  EXPECT_FALSE(readProperties({{"Temperature", -2000}}).temperatureC);
  EXPECT_EQ(readProperties({{"Temperature", -1999}}).temperatureC, -19.99);
  EXPECT_FALSE(readProperties({{"Temperature", 10000}}).temperatureC);
  EXPECT_EQ(readProperties({{"Temperature", 9999}}).temperatureC, 99.99);
}

TEST_F(BatteryReaderTest, ReadsVoltageAndSignedCurrent) {
  EXPECT_EQ(readProperties({{"Voltage", 11400}}).voltage, 11.4);
  EXPECT_FALSE(readProperties({{"Voltage", 0}}).voltage);
  EXPECT_EQ(readProperties({{"Amperage", -1250}}).amperage, -1.25);
  EXPECT_EQ(readProperties({{"Amperage", std::uint64_t{18446744073709550366U}}}).amperage, -1.25);
  EXPECT_EQ(readProperties({{"Amperage", "x"}, {"InstantAmperage", 900}}).amperage, 0.9);
  EXPECT_EQ(readProperties({{"Amperage", 5}, {"InstantAmperage", 900}}).amperage, 0.005);
  EXPECT_FALSE(readProperties({{"InstantAmperage", false}}).amperage);
}

TEST_F(BatteryReaderTest, ReadsTheAdaptersWatts) {
  EXPECT_EQ(readProperties({{"AdapterDetails", Dictionary{{"Watts", 65}}}}).adapterWatts, 65);
  EXPECT_FALSE(readProperties({{"AdapterDetails", Dictionary{{"Watts", 0}}}}).adapterWatts);
  EXPECT_FALSE(readProperties({{"AdapterDetails", Dictionary{}}}).adapterWatts);
  EXPECT_FALSE(readProperties({{"AdapterDetails", 65}}).adapterWatts);
}

TEST_F(BatteryReaderTest, ObservesOnce) {
  int first = 0;
  int second = 0;
  reader.startObserving([&] { ++first; });
  reader.startObserving([&] { ++second; });
  EXPECT_EQ(first, 0);
  sources.changes.notify();
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
  EXPECT_EQ(sources.observations, 1);
}

TEST_F(BatteryReaderTest, TriesAgainWhenObservingFailed) {
  sources.observable = false;
  int calls = 0;
  reader.startObserving([&] { ++calls; });
  sources.observable = true;
  reader.startObserving([&] { ++calls; });
  sources.changes.notify();
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace tollbeam
