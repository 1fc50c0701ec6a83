#include "platform/freedesktop/PowerTableCache.h"

#include "platform/freedesktop/SupplyReading.h"

namespace tollbeam {

PowerTableCache::Table PowerTableCache::update(const std::optional<UPowerAnswer>& upower,
                                               const Supplies& supplies) {
  std::optional<List> daemonsTable;
  if (upower) {
    const auto reading = readUPower(*upower);
    if (!reading || !isGlitch(*reading)) {
      daemonsTable = powerTable(reading);
      if (hasInternalBattery(*daemonsTable)) return last_ = {daemonsTable, false};
    } else if (last_.sources && hasInternalBattery(*last_.sources)) {
      // A bay that tells the kernel that it is empty is a glitch to the daemon, too.
      const auto kernel = supplies();
      const bool takenOut = kernel && !readSupplies(*kernel);
      if (!takenOut) return last_;
    }
  }

  const auto kernel = supplies();
  const auto reading = kernel ? readSupplies(*kernel) : std::nullopt;
  if (reading && !isGlitch(*reading)) return last_ = {powerTable(reading), true};
  if (daemonsTable) return last_ = {daemonsTable, false};
  if (reading) {
    if (!last_.sources) last_ = {List{}, true, true};
    return last_;
  }
  if (kernel) return last_ = {List{}, true};
  // Without the kernel's word the daemon's glitch, if it has answered, is all there is.
  return last_ = {std::nullopt, true, upower.has_value()};
}

}  // namespace tollbeam
