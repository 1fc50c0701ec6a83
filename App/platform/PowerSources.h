// The battery as the operating system reports it: the power-source table (charge, external power,
// time estimates) and the smart-battery properties (cycles, capacities, temperature, current).
// Reading is cheap and never blocks on a service: backends answer from a cache that signals feed.
//
// Keys of a source description: "Type" ("InternalBattery" for ours), "Is Present", "Current
// Capacity", "Max Capacity", "Is Charging", "Is Charged", "Power Source State" ("AC Power" or
// "Battery Power"), "Name", "Time to Full Charge" and "Time to Empty" (minutes, -1 while
// estimating). Keys of the properties: "CycleCount", "DesignCapacity", "AppleRawMaxCapacity",
// "NominalChargeCapacity", "MaxCapacity" (one capacity unit), "Temperature" (1/100 degree
// Celsius), "Voltage" (mV), "Amperage" or "InstantAmperage" (mA, negative while discharging) and
// "AdapterDetails" (a dictionary with "Watts").
#pragma once

#include <functional>
#include <optional>

#include "platform/Subscription.h"
#include "values/Value.h"

namespace tollbeam {

class PowerSources {
 public:
  PowerSources() = default;
  PowerSources(const PowerSources&) = delete;
  PowerSources& operator=(const PowerSources&) = delete;
  virtual ~PowerSources() = default;

  /// One description per source, the internal battery first; a laptop with several packs has one
  /// combined entry. Absent when nothing can be read. An element need not be a dictionary.
  [[nodiscard]] virtual std::optional<List> descriptions() const = 0;

  /// The smart battery's properties; absent when there is no such device.
  [[nodiscard]] virtual std::optional<Dictionary> smartBattery() const = 0;

  /// Calls `changed` on the main thread after a change of the table, never before this returns.
  /// What changed in a sleep, or in the first three seconds after it, is told later than those,
  /// once: whoever looks three seconds after the wake sees it before it is news.
  /// Absent when changes cannot be observed; reading still works then.
  virtual std::optional<Subscription> observe(std::function<void()> changed) = 0;
};

}  // namespace tollbeam
