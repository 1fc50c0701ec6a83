// The battery as the kernel reports it: the reading for a system without UPower.
#pragma once

#include <optional>

#include "platform/freedesktop/power/readings/PowerSupplies.h"
#include "platform/freedesktop/power/readings/PowerTable.h"

namespace tollbeam {

/// Whether the machine runs on external power while its packs together are in this state. If all
/// chargers are out it does not, unless the battery charges: then one is not listed. Without
/// chargers it follows UPower's guess, so that both report the same.
[[nodiscard]] bool isOnExternalPower(const PowerSupplies& supplies, ChargeState state);

/// All packs as one source; absent when there is no internal battery, a glitch when a pack does not
/// report its charge.
[[nodiscard]] std::optional<SourceReading> readSupplies(const PowerSupplies& supplies);

}  // namespace tollbeam
