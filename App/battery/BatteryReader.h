// Builds a BatteryState from what the operating system reports, and calls back when the power
// situation changes. A missing key, a value of the wrong kind or a failed read leaves its field
// empty, silently. Main thread only.
#pragma once

#include <functional>
#include <optional>

#include "battery/BatteryState.h"
#include "platform/PowerSources.h"
#include "platform/ProcessInfo.h"

namespace tollbeam {

class BatteryReader {
 public:
  BatteryReader(PowerSources& powerSources, const ProcessInfo& processInfo);
  BatteryReader(const BatteryReader&) = delete;
  BatteryReader& operator=(const BatteryReader&) = delete;

  /// A fresh snapshot. Never fails: without a battery only `lowPowerMode` is filled.
  [[nodiscard]] BatteryState read() const;

  /// Calls `changed` on the main thread at every power-source change, for the reader's life. A
  /// second call does nothing; so does the first where changes cannot be observed.
  void startObserving(std::function<void()> changed);

 private:
  PowerSources& powerSources_;
  const ProcessInfo& processInfo_;
  std::optional<Subscription> source_;
};

/// Fills the power-source fields from the first internal battery of the table, if there is one.
void readPowerSources(const List& descriptions, BatteryState& state);

/// Fills the hardware fields from the smart battery's properties.
void readSmartBattery(const Dictionary& properties, BatteryState& state);

}  // namespace tollbeam
