#include "platform/freedesktop/power/readings/PowerSupplies.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/freedesktop/power/readings/Supplies.h"
#include "platform/freedesktop/power/readings/SuppliesFolder.h"

namespace tollbeam {
namespace {

using namespace test;
namespace fs = std::filesystem;

TEST(PowerSupplies, AreReadFromTheirFiles) {
  const SuppliesFolder folder;
  folder.add("BAT0", energyPack());
  folder.add("AC", mains("1"));
  const PowerSupplies expected{{"AC", mains("1")}, {"BAT0", energyPack()}};
  EXPECT_EQ(readPowerSupplies(folder.path()), expected);
}

TEST(PowerSupplies, ReadOnlyTheKindOfAMousesBattery) {
  const SuppliesFolder folder;
  folder.add("hidpp_battery_0", mouse());
  const auto read = readPowerSupplies(folder.path());
  ASSERT_TRUE(read);
  EXPECT_EQ(textOf(read->at("hidpp_battery_0"), "scope"), "Device");
  EXPECT_EQ(textOf(read->at("hidpp_battery_0"), "capacity"), "");
}

TEST(PowerSupplies, AnUnreadableAttributeIsMissing) {
  const SuppliesFolder folder;
  folder.add("BAT0", energyPack());
  fs::remove(folder.path() + "/BAT0/energy_now");
  // Reading a folder fails as reading a file of a device that is going away does.
  fs::create_directory(folder.path() + "/BAT0/energy_now");
  const auto read = readPowerSupplies(folder.path());
  ASSERT_TRUE(read);
  EXPECT_EQ(read->at("BAT0"), without(energyPack(), "energy_now"));
}

TEST(PowerSupplies, AreAbsentWithoutTheFolderAndNoneInAnEmptyOne) {
  const SuppliesFolder folder;
  EXPECT_EQ(readPowerSupplies(folder.path()), PowerSupplies());
  EXPECT_EQ(readPowerSupplies(folder.path() + "/missing"), std::nullopt);
}

TEST(PowerSupplies, NumbersAreWholeTextsWithinTheirBounds) {
  const auto number = [](const char* text) {
    return numberOf({{"power_now", text}}, "power_now", -100, 65534);
  };
  EXPECT_EQ(number("12"), 12.0);
  EXPECT_EQ(number("-100"), -100.0);
  EXPECT_EQ(number("65534"), 65534.0);
  for (const auto* nonsense :
       {"", "-", "65535", "-101", "12 mW", "1e3", "0x10", " 12", "99999999999999999999999"}) {
    EXPECT_EQ(number(nonsense), std::nullopt) << nonsense;
  }
  EXPECT_EQ(numberOf({}, "power_now", 0, 1), std::nullopt);
}

TEST(PowerSupplies, AreBatteriesByTheirAttributesNotTheirName) {
  EXPECT_TRUE(isInternalBattery(energyPack()));
  EXPECT_TRUE(isInternalBattery(with(energyPack(), "scope", "System")));
  EXPECT_TRUE(isInternalBattery(without(energyPack(), "present")));
  EXPECT_FALSE(isInternalBattery(with(energyPack(), "present", "0")));
  EXPECT_FALSE(isInternalBattery(mouse()));
  EXPECT_FALSE(isInternalBattery(mains("1")));
  EXPECT_FALSE(isInternalBattery({{"type", "UPS"}}));
  EXPECT_FALSE(isInternalBattery({}));
}

TEST(PowerSupplies, AreExternalByTheirAttributes) {
  EXPECT_TRUE(isExternalSupply(mains("0")));
  EXPECT_TRUE(isExternalSupply(usbCharger("0")));
  EXPECT_TRUE(isExternalSupply({{"type", "USB_PD"}}));
  EXPECT_TRUE(isExternalSupply({{"type", "Unknown"}, {"usb_type", "[C]"}}));
  EXPECT_FALSE(isExternalSupply(with(usbCharger("1"), "scope", "Device")));
  EXPECT_FALSE(isExternalSupply(energyPack()));
  EXPECT_FALSE(isExternalSupply(with(energyPack(), "usb_type", "[C]")));
  EXPECT_FALSE(isExternalSupply({{"type", "UPS"}}));
}

TEST(PowerSupplies, AnyConnectedSupplyIsExternalPower) {
  EXPECT_EQ(externalPowerConnected({{"AC", mains("0")}, {"ucsi", usbCharger("0")}}), false);
  EXPECT_EQ(externalPowerConnected({{"AC", mains("0")}, {"ucsi", usbCharger("1")}}), true);
  EXPECT_EQ(externalPowerConnected({{"AC", mains("1")}, {"ucsi", usbCharger("0")}}), true);
}

TEST(PowerSupplies, AProgrammableChargerIsConnectedToo) {
  EXPECT_EQ(externalPowerConnected({{"ucsi", usbCharger("2")}}), true);
}

TEST(PowerSupplies, WithoutASupplyThatReportsItExternalPowerIsUnknown) {
  EXPECT_EQ(externalPowerConnected({{"BAT0", energyPack()}}), std::nullopt);
  EXPECT_EQ(externalPowerConnected({{"AC", mains("-")}}), std::nullopt);
  EXPECT_EQ(externalPowerConnected({{"pad", with(usbCharger("1"), "scope", "Device")}}),
            std::nullopt);
}

}  // namespace
}  // namespace tollbeam
