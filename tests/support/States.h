// Snapshots of a battery, so that a test's body shows only what matters.
#pragma once

#include "battery/BatteryState.h"

namespace tollbeam::test {

inline BatteryState onBattery(std::int64_t percent) {
  BatteryState state;
  state.hasBattery = true;
  state.percent = percent;
  return state;
}

inline BatteryState pluggedInAt(std::int64_t percent) {
  BatteryState state = onBattery(percent);
  state.pluggedIn = true;
  return state;
}

inline BatteryState chargingAt(std::int64_t percent) {
  BatteryState state = pluggedInAt(percent);
  state.isCharging = true;
  return state;
}

inline BatteryState withHealth(BatteryState state, std::int64_t full, std::int64_t design) {
  state.fullCapacity = full;
  state.designCapacity = design;
  return state;
}

}  // namespace tollbeam::test
