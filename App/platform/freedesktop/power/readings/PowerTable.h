// One reading of a power source, whoever gave it, and the power-source table made of it. A reading
// can be a glitch: firmware that has not woken up yet says "unknown, 0 %", and taking that at its
// word is how other programs warn of an empty battery at every boot.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "values/Value.h"

namespace tollbeam {

enum class ChargeState { unknown, charging, discharging, full, notCharging };

struct SourceReading {
  /// "InternalBattery", or another text for what is no battery of this machine's own.
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

/// Longer estimates come from a rate that is next to nothing, or from garbage: they are no
/// estimates.
constexpr std::int64_t longestMinutesToFull = 20 * 60;
constexpr std::int64_t longestMinutesToEmpty = 10 * 24 * 60;

[[nodiscard]] bool isGlitch(const SourceReading& reading);

/// The table with this one source; without a source it is empty.
[[nodiscard]] List powerTable(const std::optional<SourceReading>& reading);

/// Whether the table's first source is a battery of this machine's own.
[[nodiscard]] bool hasInternalBattery(const List& table);

/// The table as far as its readers look: the charge in whole percent. Two tables that are equal
/// after this need no second look.
[[nodiscard]] List inWholePercent(List table);

}  // namespace tollbeam
