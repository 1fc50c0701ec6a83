#include "platform/freedesktop/power/readings/CountedPacks.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "platform/freedesktop/power/readings/SmartBattery.h"
#include "platform/freedesktop/power/readings/Supplies.h"
#include "platform/freedesktop/power/readings/SupplyReading.h"

namespace tollbeam {
namespace {

using namespace test;

using Names = std::vector<std::string>;

// An empty bay whose controller answers, and one whose controller does not.
const SupplyAttributes kNothing{{"type", "Battery"}, {"present", "1"}, {"status", "Unknown"}};
const SupplyAttributes kUnreadable{{"type", "Battery"}, {"present", "1"}};

class CountedPacksTest : public testing::Test {
 protected:
  Names namesLeft(PowerSupplies supplies) {
    Names names;
    for (const auto& [name, supply] : packs.of(std::move(supplies))) names.push_back(name);
    return names;
  }

  CountedPacks packs;
};

TEST_F(CountedPacksTest, LeaveADeadBayOutBesideAPackThatReports) {
  EXPECT_EQ(namesLeft({{"AC", mains("1")}, {"BAT0", energyPack()}, {"BAT1", kNothing}}),
            (Names{"AC", "BAT0"}));
}

TEST_F(CountedPacksTest, KeepADeadBayWhereThereIsNoOther) {
  EXPECT_EQ(namesLeft({{"BAT1", kNothing}}), Names{"BAT1"});
  EXPECT_EQ(namesLeft({{"BAT0", kNothing}, {"BAT1", kNothing}}), (Names{"BAT0", "BAT1"}));
}

TEST_F(CountedPacksTest, KeepAPackThatIsSilentForAMoment) {
  const Names both{"BAT0", "BAT1"};
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", energyPack()}}), both);
  for (const auto& moment : {kNothing, kUnreadable, kNothing}) {
    EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", moment}}), both);
  }
}

TEST_F(CountedPacksTest, KeepAPackThatCannotBeReadYet) {
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", kUnreadable}}), (Names{"BAT0", "BAT1"}));
}

TEST_F(CountedPacksTest, CountAPackWithAnyReport) {
  const SupplyAttributes bare{{"type", "Battery"}, {"capacity", "40"}, {"status", "Discharging"}};
  for (const auto& [attribute, text] :
       {std::pair{"energy_full_design", "60000000"}, std::pair{"charge_full", "4000000"},
        std::pair{"capacity", "5"}, std::pair{"status", "Charging"}}) {
    EXPECT_EQ(namesLeft({{"BAT0", bare}, {"BAT1", with(kNothing, attribute, text)}}).back(), "BAT1")
        << attribute;
    packs = {};
  }
}

TEST_F(CountedPacksTest, TakeZeroWithAnUnknownStateForNoReport) {
  for (const auto* attribute : {"capacity", "energy_now", "charge_now"}) {
    EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", with(kNothing, attribute, "0")}}),
              Names{"BAT0"})
        << attribute;
  }
}

// Some drivers of mice do not mark the battery as a device's.
TEST_F(CountedPacksTest, LeaveABatteryWithoutAmountsOutBesideOneWithThem) {
  const auto stray = without(mouse(), "scope");
  for (const auto& pack : {energyPack(), chargePack()}) {
    EXPECT_EQ(namesLeft({{"BAT0", pack}, {"mouse", stray}}), Names{"BAT0"});
    packs = {};
  }
  EXPECT_EQ(namesLeft({{"mouse", stray}}), Names{"mouse"});
}

TEST_F(CountedPacksTest, KeepAPackWhoseAmountsAreMissingForAMoment) {
  const Names both{"BAT0", "BAT1"};
  const SupplyAttributes percentOnly{{"type", "Battery"}, {"capacity", "80"}, {"status", "Full"}};
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", energyPack()}}), both);
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", percentOnly}}), both);
  EXPECT_EQ(namesLeft({{"BAT0", percentOnly}, {"BAT1", energyPack()}}), both);
}

// Whatever is listed beside a laptop's pack, the readings are the pack's.
TEST_F(CountedPacksTest, LetNoStrayBatteryChangeTheReadings) {
  for (const auto& pack : {energyPack(), chargePack(), with(energyPack(), "status", "Charging")}) {
    const PowerSupplies alone{{"AC", mains("0")}, {"BAT0", pack}};
    for (const auto* status : {"Unknown", "Charging", "Discharging", "Full", "Not charging"}) {
      for (const auto* capacity : {"0", "5", "100"}) {
        const auto isDeadBay = std::string_view(status) == "Unknown" && capacity[0] == '0';
        auto stray = with(with(without(mouse(), "scope"), "status", status), "capacity", capacity);
        if (isDeadBay) stray = with(kNothing, "capacity", "0");
        auto beside = alone;
        beside.emplace("A0", stray);
        beside.emplace("zowie", stray);
        CountedPacks fresh;
        const auto counted = fresh.of(beside);
        EXPECT_EQ(powerTable(readSupplies(counted)), powerTable(readSupplies(alone)))
            << status << ' ' << capacity;
        EXPECT_EQ(smartBatteryProperties(counted), smartBatteryProperties(alone))
            << status << ' ' << capacity;
      }
    }
  }
}

TEST_F(CountedPacksTest, ForgetAPackThatIsTakenOut) {
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", energyPack()}}), (Names{"BAT0", "BAT1"}));
  const auto takenOut = with(kNothing, "present", "0");
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", takenOut}}), (Names{"BAT0", "BAT1"}));
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", kNothing}}), Names{"BAT0"});
}

}  // namespace
}  // namespace tollbeam
