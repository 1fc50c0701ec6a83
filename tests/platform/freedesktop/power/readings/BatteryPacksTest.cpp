#include "platform/freedesktop/power/readings/BatteryPacks.h"

#include <gtest/gtest.h>

#include "platform/freedesktop/power/readings/Supplies.h"

namespace tollbeam {
namespace {

using namespace test;

BatteryPack packIn(ChargeState state) {
  BatteryPack pack;
  pack.state = state;
  return pack;
}

std::optional<double> percentOf(const PowerSupplies& supplies) {
  return combinedPercent(internalBatteries(supplies));
}

constexpr auto charging = ChargeState::charging;
constexpr auto discharging = ChargeState::discharging;
constexpr auto full = ChargeState::full;
constexpr auto notCharging = ChargeState::notCharging;
constexpr auto unknown = ChargeState::unknown;

TEST(BatteryPacks, AreFoundUnderAnyName) {
  for (const auto* name : {"BAT0", "BAT1", "CMB0", "macsmc-battery", "sbs-9-000b", "battery"}) {
    EXPECT_EQ(internalBatteries({{name, energyPack()}, {"hidpp_battery_0", mouse()}}).size(), 1U)
        << name;
  }
}

TEST(BatteryPacks, LeaveOutAbsentPacks) {
  EXPECT_EQ(
      internalBatteries({{"BAT0", energyPack()}, {"BAT1", with(energyPack(), "present", "0")}})
          .size(),
      1U);
}

TEST(BatteryPacks, KnowEveryStatusOfTheKernel) {
  const auto stateOf = [](const char* status) {
    return internalBatteries({{"BAT0", with(energyPack(), "status", status)}}).at(0).state;
  };
  EXPECT_EQ(stateOf("Charging"), charging);
  EXPECT_EQ(stateOf("Discharging"), discharging);
  EXPECT_EQ(stateOf("Full"), full);
  EXPECT_EQ(stateOf("Not charging"), notCharging);
  EXPECT_EQ(stateOf("Unknown"), unknown);
  EXPECT_EQ(stateOf(""), unknown);
}

TEST(BatteryPacks, CombineTheirStates) {
  struct Case {
    ChargeState one, other, both;
  };
  for (const auto& c :
       {Case{discharging, charging, discharging}, Case{discharging, notCharging, discharging},
        Case{discharging, full, discharging}, Case{discharging, unknown, discharging},
        Case{charging, full, charging}, Case{charging, notCharging, charging},
        Case{charging, unknown, charging}, Case{full, full, full},
        Case{full, notCharging, notCharging}, Case{full, unknown, unknown},
        Case{notCharging, unknown, notCharging}, Case{unknown, unknown, unknown}}) {
    EXPECT_EQ(combinedState({packIn(c.one), packIn(c.other)}), c.both);
    EXPECT_EQ(combinedState({packIn(c.other), packIn(c.one)}), c.both);
    EXPECT_EQ(combinedState({packIn(c.one)}), c.one);
  }
  EXPECT_EQ(combinedState({}), unknown);
}

TEST(BatteryPacks, TheFirmwaresPercentComesFirst) {
  EXPECT_EQ(percentOf({{"BAT0", with(energyPack(), "capacity", "79")}}), 79.0);
}

TEST(BatteryPacks, WithoutAPercentTheAmountsDecide) {
  for (const auto* nonsense : {"", "-", "255", "-1"}) {
    EXPECT_EQ(percentOf({{"BAT0", with(energyPack(), "capacity", nonsense)}}), 80.0);
  }
  EXPECT_EQ(percentOf({{"BAT0", without(chargePack(), "capacity")}}), 60.0);
  const auto overfull = without(with(energyPack(), "energy_now", "51000000"), "capacity");
  EXPECT_EQ(percentOf({{"BAT0", overfull}}), 100.0);
}

TEST(BatteryPacks, WithoutAnyAmountThereIsNoPercent) {
  const SupplyAttributes bare{{"type", "Battery"}, {"status", "Discharging"}};
  EXPECT_EQ(percentOf({{"BAT0", bare}}), std::nullopt);
  EXPECT_EQ(percentOf({}), std::nullopt);
}

TEST(BatteryPacks, WeighTheirPercentByEnergy) {
  // 40 of 50 Wh and 2 of 20 Wh: 42 of 70, not the mean of 80 and 10.
  const auto small =
      with(with(with(energyPack(), "energy_full", "20000000"), "energy_now", "2000000"), "capacity",
           "10");
  EXPECT_DOUBLE_EQ(*percentOf({{"BAT0", energyPack()}, {"BAT1", small}}), 60.0);
}

TEST(BatteryPacks, WeighAChargeBasedPackByItsEnergyToo) {
  // 2.4 of 4 Ah at 10 V is 24 of 40 Wh; with 40 of 50 Wh: 64 of 90.
  EXPECT_DOUBLE_EQ(*percentOf({{"BAT0", energyPack()}, {"BAT1", chargePack()}}), 64.0 / 90 * 100);
}

TEST(BatteryPacks, WithoutVoltagesChargesAreTheWeights) {
  auto one = without(without(chargePack(), "voltage_now"), "voltage_min_design");
  auto other = with(with(one, "charge_full", "1000000"), "charge_now", "100000");
  EXPECT_DOUBLE_EQ(*percentOf({{"BAT0", one}, {"BAT1", other}}), 50.0);
}

TEST(BatteryPacks, WithPercentsAloneTheMeanCounts) {
  const SupplyAttributes one{{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "30"}};
  EXPECT_EQ(percentOf({{"BAT0", one}, {"BAT1", with(one, "capacity", "50")}}), 40.0);
}

TEST(BatteryPacks, OnePackNeverPassesForAll) {
  // The second reports its size but not how much it holds.
  const auto mute = without(without(energyPack(), "energy_now"), "capacity");
  EXPECT_EQ(percentOf({{"BAT0", energyPack()}, {"BAT1", mute}}), std::nullopt);
}

TEST(BatteryPacks, CountAPackThatCannotBeRead) {
  const PowerSupplies supplies{{"BAT0", energyPack()}, {"BAT1", {{"type", "Battery"}}}};
  EXPECT_EQ(percentOf(supplies), std::nullopt);
  const auto amounts = combinedAmounts(internalBatteries(supplies)).amounts;
  EXPECT_EQ(amounts.full, std::nullopt);
  EXPECT_EQ(amounts.design, std::nullopt);
}

TEST(BatteryPacks, AddUpInTheirCommonUnit) {
  const auto energy =
      combinedAmounts(internalBatteries({{"BAT0", energyPack()}, {"BAT1", energyPack()}}));
  EXPECT_TRUE(energy.isEnergy);
  EXPECT_EQ(energy.amounts.full, 100e6);
  EXPECT_EQ(energy.amounts.design, 120e6);
  const auto charge =
      combinedAmounts(internalBatteries({{"BAT0", chargePack()}, {"BAT1", chargePack()}}));
  EXPECT_FALSE(charge.isEnergy);
  EXPECT_EQ(charge.amounts.full, 8e6);
  EXPECT_EQ(charge.amounts.design, 10e6);
}

TEST(BatteryPacks, AddUpAsEnergyWhenMixed) {
  const auto mixed =
      combinedAmounts(internalBatteries({{"BAT0", energyPack()}, {"BAT1", chargePack()}}));
  EXPECT_TRUE(mixed.isEnergy);
  EXPECT_EQ(mixed.amounts.full, 50e6 + 40e6);
  EXPECT_EQ(mixed.amounts.design, 60e6 + 50e6);
  // Without a design voltage the present one serves.
  const auto young = without(chargePack(), "voltage_min_design");
  const auto now = combinedAmounts(internalBatteries({{"BAT0", energyPack()}, {"BAT1", young}}));
  EXPECT_DOUBLE_EQ(*now.amounts.full, 50e6 + 4e6 * 10.8);
}

TEST(BatteryPacks, ASumNeedsEveryPart) {
  const auto noDesign = without(energyPack(), "energy_full_design");
  const auto sum =
      combinedAmounts(internalBatteries({{"BAT0", energyPack()}, {"BAT1", noDesign}})).amounts;
  EXPECT_EQ(sum.design, std::nullopt);
  EXPECT_EQ(sum.full, 100e6);
}

TEST(BatteryPacks, PowerComesFromEitherMeter) {
  const auto powerOfOnly = [](const SupplyAttributes& pack) {
    return powerOf(internalBatteries({{"BAT0", pack}}).at(0));
  };
  EXPECT_EQ(powerOfOnly(energyPack()), 10e6);
  EXPECT_EQ(powerOfOnly(with(energyPack(), "power_now", "-10000000")), 10e6);
  EXPECT_DOUBLE_EQ(*powerOfOnly(chargePack()), 1.5 * 10.8e6);
  // A power that stays at 0 beside a current that does not.
  EXPECT_DOUBLE_EQ(
      *powerOfOnly(with(with(energyPack(), "power_now", "0"), "current_now", "-500000")), 6e6);
  EXPECT_EQ(powerOfOnly(with(energyPack(), "power_now", "0")), 0.0);
  EXPECT_EQ(powerOfOnly(without(energyPack(), "power_now")), std::nullopt);
}

}  // namespace
}  // namespace tollbeam
