// Power supplies as real machines list them: the attributes of one device each, for tests to
// modify.
#pragma once

#include <utility>

#include "platform/freedesktop/power/readings/PowerSupplies.h"

namespace tollbeam::test {

/// An energy-based ACPI pack at 80 %, discharging at 10 W and 12 V.
inline SupplyAttributes energyPack() {
  return {{"type", "Battery"},
          {"present", "1"},
          {"status", "Discharging"},
          {"capacity", "80"},
          {"model_name", "DELL 70N2F95"},
          {"cycle_count", "123"},
          {"energy_full_design", "60000000"},
          {"energy_full", "50000000"},
          {"energy_now", "40000000"},
          {"power_now", "10000000"},
          {"voltage_now", "12000000"},
          {"voltage_min_design", "11400000"}};
}

/// A charge-based pack at 60 %, discharging at 1.5 A: the other half of ACPI laptops.
inline SupplyAttributes chargePack() {
  return {{"type", "Battery"},
          {"present", "1"},
          {"status", "Discharging"},
          {"capacity", "60"},
          {"model_name", "PA5109U"},
          {"cycle_count", "0"},
          {"charge_full_design", "5000000"},
          {"charge_full", "4000000"},
          {"charge_now", "2400000"},
          {"current_now", "1500000"},
          {"voltage_now", "10800000"},
          {"voltage_min_design", "10000000"}};
}

/// The battery of a wireless mouse: listed among the others, but not the machine's.
inline SupplyAttributes mouse() {
  return {{"type", "Battery"},       {"scope", "Device"},    {"present", "1"},
          {"status", "Discharging"}, {"model_name", "M705"}, {"capacity", "5"}};
}

inline SupplyAttributes mains(const char* online) {
  return {{"type", "Mains"}, {"online", online}};
}

/// A USB-C port with a 65 W charger: 20 V, 3.25 A.
inline SupplyAttributes usbCharger(const char* online) {
  return {{"type", "USB"},
          {"usb_type", "C [PD] PD_PPS"},
          {"online", online},
          {"voltage_max", "20000000"},
          {"voltage_now", "19800000"},
          {"current_max", "3250000"}};
}

inline SupplyAttributes with(SupplyAttributes supply, const char* attribute, const char* text) {
  supply.insert_or_assign(attribute, text);
  return supply;
}

inline SupplyAttributes without(SupplyAttributes supply, std::string_view attribute) {
  if (const auto found = supply.find(attribute); found != supply.end()) supply.erase(found);
  return supply;
}

}  // namespace tollbeam::test
