#include "platform/freedesktop/power/readings/CountedPacks.h"

#include <utility>

#include "platform/freedesktop/power/readings/BatteryPacks.h"

namespace tollbeam {

PowerSupplies CountedPacks::of(PowerSupplies supplies) {
  Names reporting;
  Names measured;
  for (const auto& [name, supply] : supplies) {
    if (!isInternalBattery(supply)) continue;
    if (reporting_.contains(name) || reportsAnything(supply)) reporting.insert(name);
    if (measured_.contains(name) || reportsAmounts(supply)) measured.insert(name);
  }
  reporting_ = std::move(reporting);
  measured_ = std::move(measured);
  const Names& counted = measured_.empty() ? reporting_ : measured_;
  // If it is empty, all batteries are alike.
  if (counted.empty()) return supplies;
  std::erase_if(supplies, [&counted](const auto& entry) {
    const auto& [name, supply] = entry;
    return isInternalBattery(supply) && !counted.contains(name) && supply.contains("status");
  });
  return supplies;
}

}  // namespace tollbeam
