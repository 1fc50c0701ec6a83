// One snapshot of the battery, and the texts that follow from it: the reader fills it, the model
// publishes it, the alert engine, the history and the views read it. Absent means unknown and is
// never the same as zero.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "values/Message.h"

namespace tollbeam {

struct BatteryState {
  bool hasBattery = false;                     ///< an internal battery was found and read
  std::int64_t percent = 0;                    ///< charge, 0 to 100
  bool isCharging = false;                     ///< the battery is being charged
  bool pluggedIn = false;                      ///< running on external power
  bool isCharged = false;                      ///< the source says that the battery is full
  std::optional<std::int64_t> minutesToFull;   ///< absent while estimating
  std::optional<std::int64_t> minutesToEmpty;  ///< absent while estimating
  std::optional<std::string> sourceName;       ///< as the system reports it
  std::optional<std::int64_t> cycleCount;
  std::optional<std::int64_t> designCapacity;  ///< in the battery controller's unit
  std::optional<std::int64_t> fullCapacity;    ///< held when full today, same unit
  std::optional<double> temperatureC;          ///< degrees Celsius
  std::optional<double> voltage;               ///< volts
  std::optional<double> amperage;              ///< amperes, negative while discharging
  std::optional<std::int64_t> adapterWatts;    ///< rated power of the connected adapter
  bool lowPowerMode = false;                   ///< known with and without a battery

  /// Symbols for the status item, the most preferred first.
  [[nodiscard]] std::vector<std::string> symbolNames() const;

  /// "2:05" until full or empty; absent while estimating, when full and when idle on the charger.
  [[nodiscard]] std::optional<std::string> shortTime() const;

  /// What the battery is doing, in one line.
  [[nodiscard]] Message stateText() const;

  /// `fullCapacity` in percent of `designCapacity`, above 100 for a battery better than designed;
  /// absent when a capacity is unknown or the design capacity is below 1.
  [[nodiscard]] std::optional<double> healthPercent() const;

  /// "Good", "Fair" or "Worn"; absent with `healthPercent`.
  [[nodiscard]] std::optional<std::string> healthLabel() const;

  friend bool operator==(const BatteryState&, const BatteryState&) = default;
};

}  // namespace tollbeam
