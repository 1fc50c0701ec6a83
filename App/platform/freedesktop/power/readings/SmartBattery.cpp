#include "platform/freedesktop/power/readings/SmartBattery.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/freedesktop/power/readings/BatteryPacks.h"
#include "platform/freedesktop/power/readings/SupplyReading.h"

namespace tollbeam {

namespace {

using Packs = std::vector<BatteryPack>;

std::int64_t whole(double value) { return static_cast<std::int64_t>(std::llround(value)); }

void putThousandth(Dictionary& properties, const char* key, std::optional<double> value) {
  if (value) properties.emplace(key, whole(*value / 1000));
}

// Absent counts as the least.
std::optional<double> highest(const Packs& packs, std::optional<double> BatteryPack::*part) {
  return std::ranges::max(packs, {}, part).*part;
}

// The status gives the direction. Otherwise the driver's sign does, except that a battery without
// external power cannot be charging.
double signedBy(const BatteryPack& pack, bool external, double size) {
  if (pack.state == ChargeState::charging) return size;
  if (pack.state == ChargeState::discharging || !external) return -size;
  const bool driverSaysNegative =
      pack.microamperes ? *pack.microamperes < 0 : pack.microwatts.value_or(0) < 0;
  return driverSaysNegative ? -size : size;
}

// The current that amounts to the power of all packs at `voltage`, which is the one reported.
std::optional<double> combinedCurrent(const Packs& packs, std::optional<double> voltage,
                                      bool external) {
  if (packs.size() == 1) {
    const auto current = currentOf(packs.front());
    if (!current) return std::nullopt;
    return signedBy(packs.front(), external, *current);
  }
  if (!voltage) return std::nullopt;
  double total = 0;
  bool known = false;
  for (const auto& pack : packs) {
    const auto power = powerOf(pack);
    // Only a pack at rest need not report its power.
    const bool isAtRest =
        pack.state != ChargeState::charging && pack.state != ChargeState::discharging;
    if (!power && !isAtRest) return std::nullopt;
    known = known || power;
    total += signedBy(pack, external, power.value_or(0));
  }
  if (!known) return std::nullopt;
  return total / *voltage * 1e6;
}

std::optional<std::int64_t> adapterWatts(const PowerSupplies& supplies) {
  using namespace supplyLimits;
  std::optional<std::int64_t> largest;
  for (const auto& [name, supply] : supplies) {
    if (!isExternalSupply(supply) || !numberOf(supply, "online", 1, 2)) continue;
    auto voltage = numberOf(supply, "voltage_max", 1, microvolts);
    if (!voltage) voltage = numberOf(supply, "voltage_now", 1, microvolts);
    const auto current = numberOf(supply, "current_max", 1, microamperes);
    if (!voltage || !current) continue;
    const double watts = *voltage * *current / 1e12;
    if (watts >= 0.5 && watts * 1e6 <= microwatts) largest = std::max(largest, {whole(watts)});
  }
  return largest;
}

}  // namespace

std::optional<Dictionary> smartBatteryProperties(const PowerSupplies& supplies) {
  const auto packs = internalBatteries(supplies);
  if (packs.empty()) return std::nullopt;

  Dictionary properties;
  const auto amounts = combinedAmounts(packs).amounts;
  putThousandth(properties, "DesignCapacity", amounts.design);
  putThousandth(properties, "AppleRawMaxCapacity", amounts.full);

  const auto cycles = highest(packs, &BatteryPack::cycles);
  if (cycles) properties.emplace("CycleCount", whole(*cycles));
  const auto hottest = highest(packs, &BatteryPack::temperature);
  if (hottest) properties.emplace("Temperature", whole(*hottest * 10));

  const auto reporting = std::ranges::find_if(
      packs, [](const BatteryPack& pack) { return pack.microvolts.has_value(); });
  const auto voltage = reporting == packs.end() ? std::nullopt : reporting->microvolts;
  putThousandth(properties, "Voltage", voltage);
  const bool external = isOnExternalPower(supplies, combinedState(packs));
  putThousandth(properties, "Amperage", combinedCurrent(packs, voltage, external));

  if (const auto watts = adapterWatts(supplies)) {
    properties.emplace("AdapterDetails", Dictionary{{"Watts", *watts}});
  }
  return properties;
}

}  // namespace tollbeam
