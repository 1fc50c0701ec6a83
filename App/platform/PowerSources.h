#pragma once

#include <functional>
#include <optional>

#include "platform/Port.h"
#include "platform/Subscription.h"
#include "values/Value.h"

namespace tollbeam {

/// The battery as the operating system reports it. Reading is cheap: backends answer from a cache
/// that the system's signals keep fresh.
class PowerSources : public Port {
 public:
  /// The power-source table: one description per source, the internal battery first; a laptop with
  /// several packs has one combined entry. Absent when nothing can be read. An element may be of
  /// another kind than a dictionary, and any key may be missing or hold another kind.
  ///
  /// Keys: "Type" ("InternalBattery" for ours), "Is Present", "Current Capacity", "Max Capacity",
  /// "Is Charging", "Is Charged", "Power Source State" ("AC Power" or "Battery Power"), "Name",
  /// "Time to Full Charge" and "Time to Empty" (minutes, -1 while estimating).
  [[nodiscard]] virtual std::optional<List> descriptions() const = 0;

  /// The smart battery's properties; absent when there is no such device. Any key may be missing or
  /// hold another kind.
  ///
  /// Keys: "CycleCount", "DesignCapacity", "AppleRawMaxCapacity", "NominalChargeCapacity",
  /// "MaxCapacity" (one capacity unit), "Temperature" (1/100 degree Celsius), "Voltage" (mV),
  /// "Amperage" or "InstantAmperage" (mA, negative while discharging) and "AdapterDetails" (a
  /// dictionary with "Watts").
  [[nodiscard]] virtual std::optional<Dictionary> smartBattery() const = 0;

  /// Calls `changed` after a change of the table. Changes during a sleep and in the first three
  /// seconds after it are reported once, after those three seconds. Absent when changes cannot be
  /// observed; reading still works then.
  virtual std::optional<Subscription> observe(std::function<void()> changed) = 0;
};

}  // namespace tollbeam
