// The battery as the kernel reports it: the power-source reading for a system without UPower, and
// the smart battery's properties, which UPower does not pass on for several packs together.
#pragma once

#include <optional>

#include "platform/freedesktop/power/readings/PowerSupplies.h"
#include "platform/freedesktop/power/readings/PowerTable.h"
#include "values/Value.h"

namespace tollbeam {

/// Whether the machine runs on external power while its packs are in this state together. Chargers
/// that are all out settle it, unless the battery charges: then one is not listed. Without a list
/// UPower's guess is followed, so that both say the same.
[[nodiscard]] bool isOnExternalPower(const PowerSupplies& supplies, ChargeState state);

/// All packs as one source; absent when there is no internal battery, a glitch when one does not
/// tell its charge.
[[nodiscard]] std::optional<SourceReading> readSupplies(const PowerSupplies& supplies);

/// Under the keys of `PowerSources::smartBattery`; absent when there is no internal battery. What
/// the firmware does not tell, or only some packs tell, is left out.
[[nodiscard]] std::optional<Dictionary> smartBatteryProperties(const PowerSupplies& supplies);

}  // namespace tollbeam
