// The smart battery's properties as the kernel reports them. UPower does not pass them on for
// several packs together.
#pragma once

#include <optional>

#include "platform/freedesktop/power/readings/PowerSupplies.h"
#include "values/Value.h"

namespace tollbeam {

/// Under the keys of `PowerSources::smartBattery`; absent when there is no internal battery. What
/// the firmware does not report, or only some packs report, is left out.
[[nodiscard]] std::optional<Dictionary> smartBatteryProperties(const PowerSupplies& supplies);

}  // namespace tollbeam
