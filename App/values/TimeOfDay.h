#pragma once

#include <compare>

namespace tollbeam {

/// What a clock on the wall shows, to the minute.
struct TimeOfDay {
  int hour = 0;    ///< 0 to 23
  int minute = 0;  ///< 0 to 59

  /// Whether both are in their range.
  [[nodiscard]] bool isOnAClock() const {
    return 0 <= hour && hour < 24 && 0 <= minute && minute < 60;
  }

  /// The earlier one is less.
  friend auto operator<=>(const TimeOfDay&, const TimeOfDay&) = default;
};

}  // namespace tollbeam
