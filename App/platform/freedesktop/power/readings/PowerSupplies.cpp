#include "platform/freedesktop/power/readings/PowerSupplies.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace tollbeam {

namespace {

// 2 is a programmable supply that is online.
bool isOnline(const SupplyAttributes& supply) {
  return numberOf(supply, "online", 1, 2).has_value();
}

}  // namespace

std::string_view textOf(const SupplyAttributes& supply, std::string_view attribute) {
  const auto found = supply.find(attribute);
  return found == supply.end() ? std::string_view() : std::string_view(found->second);
}

std::optional<double> numberOf(const SupplyAttributes& supply, std::string_view attribute,
                               double least, double most) {
  const auto text = textOf(supply, attribute);
  std::int64_t number = 0;
  const auto* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  const auto value = static_cast<double>(number);
  if (value < least || value > most) return std::nullopt;
  return value;
}

bool isInternalBattery(const SupplyAttributes& supply) {
  return textOf(supply, "type") == "Battery" && textOf(supply, "scope") != "Device" &&
         textOf(supply, "present") != "0";
}

bool isExternalSupply(const SupplyAttributes& supply) {
  const auto type = textOf(supply, "type");
  if (type == "Battery" || textOf(supply, "scope") == "Device") return false;
  return type == "Mains" || type.starts_with("USB") || supply.contains("usb_type");
}

std::optional<bool> externalPowerConnected(const PowerSupplies& supplies) {
  std::optional<bool> connected;
  for (const auto& [name, supply] : supplies) {
    if (!isExternalSupply(supply) || !numberOf(supply, "online", 0, 2)) continue;
    connected = connected.value_or(false) || isOnline(supply);
  }
  return connected;
}

}  // namespace tollbeam
