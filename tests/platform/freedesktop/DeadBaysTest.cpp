#include "platform/freedesktop/DeadBays.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/freedesktop/Supplies.h"

namespace tollbeam {
namespace {

using namespace test;

using Names = std::vector<std::string>;

// A bay whose controller answers, and one that does not.
const SupplyAttributes kNothing{{"type", "Battery"}, {"present", "1"}, {"status", "Unknown"}};
const SupplyAttributes kUnreadable{{"type", "Battery"}, {"present", "1"}};

class DeadBaysTest : public testing::Test {
 protected:
  Names namesLeft(PowerSupplies supplies) {
    Names names;
    for (const auto& [name, supply] : bays.without(std::move(supplies))) names.push_back(name);
    return names;
  }

  DeadBays bays;
};

TEST_F(DeadBaysTest, DoNotCountBesideAPackThatTells) {
  EXPECT_EQ(namesLeft({{"AC", mains("1")}, {"BAT0", energyPack()}, {"BAT1", kNothing}}),
            (Names{"AC", "BAT0"}));
}

TEST_F(DeadBaysTest, AreABatteryWhereThereIsNoOther) {
  EXPECT_EQ(namesLeft({{"BAT1", kNothing}}), Names{"BAT1"});
  EXPECT_EQ(namesLeft({{"BAT0", kNothing}, {"BAT1", kNothing}}), (Names{"BAT0", "BAT1"}));
}

TEST_F(DeadBaysTest, APackThatIsSilentForAMomentIsNone) {
  const Names both{"BAT0", "BAT1"};
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", energyPack()}}), both);
  for (const auto& moment : {kNothing, kUnreadable, kNothing}) {
    EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", moment}}), both);
  }
}

TEST_F(DeadBaysTest, APackThatCannotBeReadYetIsNone) {
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", kUnreadable}}), (Names{"BAT0", "BAT1"}));
}

TEST_F(DeadBaysTest, AnySignOfLifeCounts) {
  for (const auto& [attribute, text] :
       {std::pair{"energy_full_design", "60000000"}, std::pair{"charge_full", "4000000"},
        std::pair{"capacity", "0"}, std::pair{"status", "Charging"}}) {
    EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", with(kNothing, attribute, text)}}),
              (Names{"BAT0", "BAT1"}))
        << attribute;
    bays = {};
  }
}

TEST_F(DeadBaysTest, APackTakenOutIsForgotten) {
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", energyPack()}}), (Names{"BAT0", "BAT1"}));
  const auto takenOut = with(kNothing, "present", "0");
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", takenOut}}), (Names{"BAT0", "BAT1"}));
  EXPECT_EQ(namesLeft({{"BAT0", energyPack()}, {"BAT1", kNothing}}), Names{"BAT0"});
}

}  // namespace
}  // namespace tollbeam
