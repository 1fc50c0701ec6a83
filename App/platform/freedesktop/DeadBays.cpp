#include "platform/freedesktop/DeadBays.h"

#include <algorithm>
#include <utility>

#include "platform/freedesktop/BatteryPacks.h"

namespace tollbeam {

PowerSupplies DeadBays::without(PowerSupplies supplies) {
  std::set<std::string> alive;
  for (const auto& [name, supply] : supplies) {
    if (isInternalBattery(supply) && (alive_.contains(name) || tellsAnything(supply))) {
      alive.insert(name);
    }
  }
  alive_ = std::move(alive);
  if (alive_.empty()) return supplies;
  std::erase_if(supplies, [this](const auto& entry) {
    const auto& [name, supply] = entry;
    return isInternalBattery(supply) && !alive_.contains(name) && supply.contains("status");
  });
  return supplies;
}

}  // namespace tollbeam
