// The battery as the kernel reports it: the power-source reading for a system without UPower, and
// the smart battery's properties, which UPower does not pass on for several packs together.
#pragma once

#include <optional>

#include "platform/Value.h"
#include "platform/freedesktop/PowerSupplies.h"
#include "platform/freedesktop/PowerTable.h"

namespace tollbeam {

/// All packs as one source; absent when there is no internal battery, a glitch when one does not
/// tell its charge.
[[nodiscard]] std::optional<SourceReading> readSupplies(const PowerSupplies& supplies);

/// Under the keys of `PowerSources::smartBattery`; absent when there is no internal battery. What
/// the firmware does not tell, or only some packs tell, is left out.
[[nodiscard]] std::optional<Dictionary> smartBatteryProperties(const PowerSupplies& supplies);

}  // namespace tollbeam
