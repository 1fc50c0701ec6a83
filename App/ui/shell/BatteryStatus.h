// A battery state as the status item shows it: picture, text beside it and tooltip, the same on
// every desktop.
#pragma once

#include "battery/BatteryState.h"
#include "platform/StatusBar.h"
#include "preferences/Prefs.h"

namespace tollbeam {

[[nodiscard]] StatusItemContent batteryStatus(const BatteryState& state, const Prefs& prefs);

}  // namespace tollbeam
