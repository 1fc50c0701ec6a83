#include "platform/freedesktop/power/readings/SupplyReading.h"

#include <gtest/gtest.h>

#include "platform/freedesktop/power/readings/Supplies.h"

namespace tollbeam {
namespace {

using namespace test;

SourceReading of(const PowerSupplies& supplies) {
  const auto reading = readSupplies(supplies);
  EXPECT_TRUE(reading);
  return reading.value_or(SourceReading{});
}

TEST(SupplyReading, ReadsALaptopOnBattery) {
  const auto reading = of({{"AC", mains("0")}, {"BAT0", energyPack()}, {"mouse", mouse()}});
  EXPECT_EQ(reading.type, "InternalBattery");
  EXPECT_EQ(reading.name, "DELL 70N2F95");
  EXPECT_EQ(reading.percent, 80.0);
  EXPECT_EQ(reading.state, ChargeState::discharging);
  EXPECT_FALSE(reading.onExternalPower);
  EXPECT_EQ(reading.minutesToEmpty, 240);
  EXPECT_EQ(reading.minutesToFull, std::nullopt);
}

TEST(SupplyReading, ReadsALaptopOnTheCharger) {
  const auto reading = of({{"AC", mains("1")}, {"BAT0", with(energyPack(), "status", "Charging")}});
  EXPECT_EQ(reading.state, ChargeState::charging);
  EXPECT_TRUE(reading.onExternalPower);
  EXPECT_EQ(reading.minutesToFull, 60);
  EXPECT_EQ(reading.minutesToEmpty, std::nullopt);
}

TEST(SupplyReading, AWeakChargerIsExternalPower) {
  const auto reading = of({{"ucsi", usbCharger("1")}, {"BAT0", energyPack()}});
  EXPECT_EQ(reading.state, ChargeState::discharging);
  EXPECT_TRUE(reading.onExternalPower);
}

TEST(SupplyReading, WithoutASupplyTheStateDecidesOnExternalPower) {
  for (const auto* status : {"Discharging", "Unknown"}) {
    EXPECT_FALSE(of({{"BAT0", with(energyPack(), "status", status)}}).onExternalPower) << status;
  }
  for (const auto* status : {"Charging", "Full", "Not charging"}) {
    EXPECT_TRUE(of({{"BAT0", with(energyPack(), "status", status)}}).onExternalPower) << status;
  }
}

TEST(SupplyReading, WithAllSuppliesOutOnlyChargingIsExternalPower) {
  for (const auto* status : {"Discharging", "Unknown", "Full", "Not charging"}) {
    EXPECT_FALSE(of({{"AC", mains("0")},
                     {"ucsi", usbCharger("0")},
                     {"BAT0", with(energyPack(), "status", status)}})
                     .onExternalPower)
        << status;
  }
  const auto charging = with(energyPack(), "status", "Charging");
  EXPECT_TRUE(of({{"AC", mains("0")}, {"BAT0", charging}}).onExternalPower);
}

TEST(SupplyReading, EstimatesFromChargeToo) {
  EXPECT_EQ(of({{"BAT0", chargePack()}}).minutesToEmpty, 96);  // 2.4 Ah at 1.5 A
  const auto charging = with(chargePack(), "status", "Charging");
  EXPECT_EQ(of({{"BAT0", charging}}).minutesToFull, 64);  // 1.6 Ah at 1.5 A
}

TEST(SupplyReading, HasNoEstimateWithoutPower) {
  for (const auto& pack :
       {with(energyPack(), "power_now", "0"), with(energyPack(), "power_now", "-"),
        without(energyPack(), "power_now"), without(energyPack(), "energy_now"),
        with(energyPack(), "power_now", "1000")}) {
    EXPECT_EQ(of({{"BAT0", pack}}).minutesToEmpty, std::nullopt);
  }
}

TEST(SupplyReading, AFullPackThatStillChargesNeedsNoTime) {
  const auto topped = with(with(energyPack(), "status", "Charging"), "energy_now", "50000000");
  EXPECT_EQ(of({{"BAT0", topped}}).minutesToFull, 0);
  const auto beyond = with(topped, "energy_now", "50100000");
  EXPECT_EQ(of({{"BAT0", beyond}}).minutesToFull, std::nullopt);
}

TEST(SupplyReading, TwoPacksAreOneBattery) {
  const auto resting = with(with(energyPack(), "status", "Not charging"), "power_now", "0");
  const auto reading = of({{"BAT0", resting}, {"BAT1", energyPack()}});
  EXPECT_EQ(reading.state, ChargeState::discharging);
  EXPECT_EQ(reading.percent, 80.0);
  EXPECT_EQ(reading.minutesToEmpty, 480);  // 80 Wh at the 10 W of the one at work
  EXPECT_EQ(reading.name, "");
}

TEST(SupplyReading, ARestingPackNeedNotReportItsPower) {
  const auto resting = without(with(energyPack(), "status", "Full"), "power_now");
  EXPECT_EQ(of({{"BAT0", resting}, {"BAT1", energyPack()}}).minutesToEmpty, 480);
  const auto mute = without(energyPack(), "power_now");
  EXPECT_EQ(of({{"BAT0", mute}, {"BAT1", energyPack()}}).minutesToEmpty, std::nullopt);
}

TEST(SupplyReading, AMouseAloneIsNoBattery) {
  EXPECT_FALSE(readSupplies({{"mouse", mouse()}, {"AC", mains("1")}}));
  EXPECT_FALSE(readSupplies({}));
}

TEST(SupplyReading, ABatteryThatReportsNoChargeIsAGlitch) {
  const SupplyAttributes waking{{"type", "Battery"}, {"present", "1"}, {"status", "Discharging"}};
  EXPECT_TRUE(isGlitch(of({{"BAT0", waking}})));
  const auto booting = with(with(energyPack(), "status", "Unknown"), "capacity", "0");
  EXPECT_TRUE(isGlitch(of({{"BAT0", booting}})));
  EXPECT_FALSE(isGlitch(of({{"BAT0", with(energyPack(), "capacity", "0")}})));
}

TEST(SupplyReading, GarbageIsNoName) {
  for (const auto* model : {"-", "", "\xff\xff\x01", "caf\xc3\xa9\x07"}) {
    EXPECT_EQ(of({{"BAT0", with(energyPack(), "model_name", model)}}).name, "") << model;
  }
}

}  // namespace
}  // namespace tollbeam
