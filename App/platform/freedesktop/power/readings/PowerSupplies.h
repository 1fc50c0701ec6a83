// The kernel's power supplies: one folder per device, one small text file per attribute. The
// attributes tell the kind of a device, never its name: batteries are called BAT1, CMB0 or
// macsmc-battery, and a mouse's battery is a power supply too.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tollbeam {

/// Attribute to text, without the line feed at its end.
using SupplyAttributes = std::map<std::string, std::string, std::less<>>;

/// Device to attributes, in the order of the names.
using PowerSupplies = std::map<std::string, SupplyAttributes, std::less<>>;

/// Reads the attributes that Tollbeam uses. Absent when there is no such folder; an attribute that
/// cannot be read is missing.
[[nodiscard]] std::optional<PowerSupplies> readPowerSupplies(const std::string& folder);

/// The attribute's text; empty when there is none.
[[nodiscard]] std::string_view textOf(const SupplyAttributes& supply, std::string_view attribute);

/// The attribute's whole number; absent when it is missing, no number or outside the bounds: a
/// register's "unknown" is a number out of bounds.
[[nodiscard]] std::optional<double> numberOf(const SupplyAttributes& supply,
                                             std::string_view attribute, double least, double most);

/// A battery that runs this machine, as opposed to one of a mouse or a headset.
[[nodiscard]] bool isInternalBattery(const SupplyAttributes& supply);

/// A charger or another external source.
[[nodiscard]] bool isExternalSupply(const SupplyAttributes& supply);

/// Whether external power is connected; absent when no supply of the machine reports it.
[[nodiscard]] std::optional<bool> externalPowerConnected(const PowerSupplies& supplies);

/// Largest possible readings, in the kernel's millionths: beyond them a value is an unset register.
namespace supplyLimits {
constexpr double microvolts = 100e6;
constexpr double microamperes = 50e6;
constexpr double microwatts = 500e6;
constexpr double capacity = 1e9;
}  // namespace supplyLimits

}  // namespace tollbeam
