// What the status item shows of a battery state: picture, text beside it and tooltip. A pure
// function, so that the item is right on every desktop when it is right here.
#pragma once

#include "battery/BatteryState.h"
#include "platform/StatusBar.h"
#include "preferences/Prefs.h"

namespace tollbeam {

[[nodiscard]] StatusItemContent statusItemContent(const BatteryState& state, const Prefs& prefs);

}  // namespace tollbeam
