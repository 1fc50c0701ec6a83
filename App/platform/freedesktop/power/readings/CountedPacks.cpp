#include "platform/freedesktop/power/readings/CountedPacks.h"

#include <utility>

#include "platform/freedesktop/power/readings/BatteryPacks.h"

namespace tollbeam {

namespace {

using Names = std::set<std::string>;

// Adds those that now pass the test, and forgets those that are gone.
void update(Names& names, const PowerSupplies& supplies,
            bool (*passes)(const SupplyAttributes& battery)) {
  Names now;
  for (const auto& [name, supply] : supplies) {
    if (isInternalBattery(supply) && (names.contains(name) || passes(supply))) now.insert(name);
  }
  names = std::move(now);
}

// Without a member nothing is known to be better than the rest.
void keepOnly(const Names& names, PowerSupplies& supplies) {
  if (names.empty()) return;
  std::erase_if(supplies, [&names](const auto& entry) {
    const auto& [name, supply] = entry;
    return isInternalBattery(supply) && !names.contains(name) && supply.contains("status");
  });
}

}  // namespace

PowerSupplies CountedPacks::of(PowerSupplies supplies) {
  update(alive_, supplies, &tellsAnything);
  update(measured_, supplies, &tellsAmounts);
  keepOnly(measured_.empty() ? alive_ : measured_, supplies);
  return supplies;
}

}  // namespace tollbeam
