// One reading of a power source, from UPower or the kernel, and the power-source table made of it.
// A reading can be a glitch: firmware that is not awake yet reports "unknown, 0 %", which would be
// a warning of an empty battery at every boot.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "values/Value.h"

namespace tollbeam {

enum class ChargeState { unknown, charging, discharging, full, notCharging };

struct SourceReading {
  /// "InternalBattery", or another text for a source that is no battery of this machine.
  std::string type = "InternalBattery";
  /// Empty when the source has none.
  std::string name;
  double percent = 0;
  ChargeState state = ChargeState::unknown;
  bool onExternalPower = false;
  /// Absent while there is no estimate.
  std::optional<std::int64_t> minutesToFull;
  std::optional<std::int64_t> minutesToEmpty;
};

/// Longer estimates come from a rate near zero or from garbage, and are left out.
constexpr std::int64_t kLongestMinutesToFull = 20 * 60;
constexpr std::int64_t kLongestMinutesToEmpty = 10 * 24 * 60;

[[nodiscard]] bool isGlitch(const SourceReading& reading);

/// The table with this one source; empty without a source.
[[nodiscard]] List powerTable(const std::optional<SourceReading>& reading);

/// Whether the table's first source is a battery of this machine.
[[nodiscard]] bool hasInternalBattery(const List& table);

/// The table with the charge in whole percent, which is all that readers use: when this does not
/// change, no refresh is needed.
[[nodiscard]] List inWholePercent(List table);

}  // namespace tollbeam
