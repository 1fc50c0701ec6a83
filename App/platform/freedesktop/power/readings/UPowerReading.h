// UPower's properties of the battery, decoded. UPower's display device already combines all packs
// of a laptop; only the daemon's manager object tells whether the machine runs on external power.
#pragma once

#include <optional>

#include "platform/freedesktop/power/readings/PowerTable.h"
#include "values/Value.h"

namespace tollbeam {

struct UPowerAnswer {
  /// Properties of the display device, under their own names.
  Dictionary device;
  bool onBattery = false;
};

/// The reading; absent when UPower has nothing to display.
[[nodiscard]] std::optional<SourceReading> readUPower(const UPowerAnswer& answer);

}  // namespace tollbeam
