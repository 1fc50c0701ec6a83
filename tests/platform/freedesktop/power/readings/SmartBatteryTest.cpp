#include "platform/freedesktop/power/readings/SmartBattery.h"

#include <gtest/gtest.h>

#include "platform/freedesktop/power/readings/Supplies.h"

namespace tollbeam {
namespace {

using namespace test;

Dictionary of(const PowerSupplies& supplies) {
  const auto properties = smartBatteryProperties(supplies);
  EXPECT_TRUE(properties);
  return properties.value_or(Dictionary{});
}

std::optional<std::int64_t> number(const Dictionary& properties, const char* key) {
  const Value* value = find(properties, key);
  return value ? value->integer() : std::nullopt;
}

std::optional<std::int64_t> amperage(const PowerSupplies& supplies) {
  return number(of(supplies), "Amperage");
}

std::optional<std::int64_t> watts(const PowerSupplies& supplies) {
  const auto properties = of(supplies);
  const Value* details = find(properties, "AdapterDetails");
  return details ? number(*details->dictionary(), "Watts") : std::nullopt;
}

TEST(SmartBattery, ReportsAnEnergyBasedPack) {
  const Dictionary expected{{"DesignCapacity", 60000}, {"AppleRawMaxCapacity", 50000},
                            {"CycleCount", 123},       {"Temperature", 3050},
                            {"Voltage", 12000},        {"Amperage", -833}};
  EXPECT_EQ(of({{"AC", mains("0")}, {"BAT0", with(energyPack(), "temp", "305")}}), expected);
}

TEST(SmartBattery, ReportsAChargeBasedPack) {
  const Dictionary expected{{"DesignCapacity", 5000},
                            {"AppleRawMaxCapacity", 4000},
                            {"Voltage", 10800},
                            {"Amperage", -1500}};
  EXPECT_EQ(of({{"macsmc-battery", chargePack()}}), expected);
}

TEST(SmartBattery, IsAbsentWithoutAnInternalBattery) {
  EXPECT_FALSE(smartBatteryProperties({{"mouse", mouse()}, {"AC", mains("1")}}));
  EXPECT_FALSE(smartBatteryProperties({}));
}

TEST(SmartBattery, LeavesImpossibleValuesOut) {
  const SupplyAttributes nonsense{
      {"type", "Battery"},         {"status", "Discharging"},      {"cycle_count", "65535"},
      {"energy_full_design", "0"}, {"energy_full", "-"},           {"energy_now", ""},
      {"voltage_now", "0"},        {"current_now", "65535000000"}, {"temp", "65535"}};
  EXPECT_EQ(of({{"BAT0", nonsense}}), Dictionary());
}

TEST(SmartBattery, ZeroCyclesAreNotCounted) {
  EXPECT_EQ(number(of({{"BAT0", with(energyPack(), "cycle_count", "0")}}), "CycleCount"),
            std::nullopt);
}

TEST(SmartBattery, TheStatusGivesTheCurrentItsSign) {
  const auto pack = [](const char* status, const char* current) {
    return PowerSupplies{
        {"AC", mains("1")},
        {"BAT0", with(with(chargePack(), "status", status), "current_now", current)}};
  };
  EXPECT_EQ(amperage(pack("Discharging", "1500000")), -1500);
  EXPECT_EQ(amperage(pack("Discharging", "-1500000")), -1500);
  EXPECT_EQ(amperage(pack("Charging", "1500000")), 1500);
  EXPECT_EQ(amperage(pack("Charging", "-1500000")), 1500);
}

TEST(SmartBattery, WithoutADirectionTheDriversSignCountsUnlessUnplugged) {
  auto held = with(with(chargePack(), "status", "Not charging"), "current_now", "-5000");
  EXPECT_EQ(amperage({{"AC", mains("1")}, {"BAT0", held}}), -5);
  held = with(held, "current_now", "5000");
  EXPECT_EQ(amperage({{"AC", mains("1")}, {"BAT0", held}}), 5);
  EXPECT_EQ(amperage({{"AC", mains("0")}, {"BAT0", with(held, "status", "Unknown")}}), -5);
}

TEST(SmartBattery, AMissingCurrentComesFromThePower) {
  const auto charging = with(energyPack(), "status", "Charging");
  EXPECT_EQ(amperage({{"AC", mains("1")}, {"BAT0", charging}}), 833);
  EXPECT_EQ(amperage({{"BAT0", without(energyPack(), "voltage_now")}}), std::nullopt);
}

TEST(SmartBattery, TwoPacksAreOneBattery) {
  const auto first = with(with(energyPack(), "temp", "291"), "cycle_count", "40");
  const auto second = with(with(energyPack(), "temp", "330"), "voltage_now", "11000000");
  const auto both = of({{"BAT0", first}, {"BAT1", second}});
  EXPECT_EQ(number(both, "DesignCapacity"), 120000);
  EXPECT_EQ(number(both, "AppleRawMaxCapacity"), 100000);
  EXPECT_EQ(number(both, "CycleCount"), 123);
  EXPECT_EQ(number(both, "Temperature"), 3300);
  EXPECT_EQ(number(both, "Voltage"), 12000);
  EXPECT_EQ(number(both, "Amperage"), -1667);  // 20 W at the reported 12 V
}

TEST(SmartBattery, MixedPacksAreReportedInEnergy) {
  const auto both = of({{"BAT0", energyPack()}, {"BAT1", chargePack()}});
  EXPECT_EQ(number(both, "DesignCapacity"), 110000);
  EXPECT_EQ(number(both, "AppleRawMaxCapacity"), 90000);
}

TEST(SmartBattery, OnePackChargingTheOtherCancelsOut) {
  const auto giving = energyPack();
  const auto taking = with(with(energyPack(), "status", "Charging"), "power_now", "4000000");
  EXPECT_EQ(amperage({{"BAT0", giving}, {"BAT1", taking}}), -500);
}

TEST(SmartBattery, OnlyAPackAtRestNeedNotReportItsPower) {
  const auto resting = without(with(energyPack(), "status", "Full"), "power_now");
  EXPECT_EQ(amperage({{"BAT0", resting}, {"BAT1", energyPack()}}), -833);
  const auto mute = without(energyPack(), "power_now");
  EXPECT_EQ(amperage({{"BAT0", mute}, {"BAT1", energyPack()}}), std::nullopt);
  EXPECT_EQ(amperage({{"BAT0", resting}, {"BAT1", resting}}), std::nullopt);
}

TEST(SmartBattery, ReportsTheLargestConnectedAdapter) {
  const auto dock = with(with(usbCharger("1"), "current_max", "5000000"), "online", "1");
  EXPECT_EQ(watts({{"BAT0", energyPack()}, {"one", usbCharger("1")}}), 65);
  EXPECT_EQ(watts({{"BAT0", energyPack()}, {"one", usbCharger("1")}, {"two", dock}}), 100);
  EXPECT_EQ(watts({{"BAT0", energyPack()}, {"one", usbCharger("0")}}), std::nullopt);
  EXPECT_EQ(watts({{"BAT0", energyPack()}, {"AC", mains("1")}}), std::nullopt);
}

TEST(SmartBattery, UsesTheAdaptersPresentVoltageWithoutAMaximum) {
  EXPECT_EQ(watts({{"BAT0", energyPack()}, {"usb", without(usbCharger("1"), "voltage_max")}}), 64);
}

TEST(SmartBattery, AnImpossibleAdapterIsLeftOut) {
  EXPECT_EQ(watts({{"BAT0", energyPack()}, {"usb", with(usbCharger("1"), "current_max", "0")}}),
            std::nullopt);
  EXPECT_EQ(watts({{"BAT0", energyPack()},
                   {"usb", with(usbCharger("1"), "current_max", "4294967295000000")}}),
            std::nullopt);
}

}  // namespace
}  // namespace tollbeam
