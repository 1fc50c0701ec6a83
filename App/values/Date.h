#pragma once

#include <compare>

namespace tollbeam {

/// An instant. It has no "now": time is an argument of every rule, so that a test decides what time
/// it is.
struct Date {
  double secondsSince1970 = 0;  ///< since 1970-01-01 00:00:00 UTC, with the fraction

  /// Before anything that can have happened: the first day of the year 1.
  static constexpr Date distantPast() { return {-62135769600.0}; }

  /// The earlier one is less.
  friend constexpr auto operator<=>(const Date&, const Date&) = default;
};

/// The seconds from `b` to `a`.
constexpr double operator-(Date a, Date b) { return a.secondsSince1970 - b.secondsSince1970; }
/// The instant `seconds` after `d`.
constexpr Date operator+(Date d, double seconds) { return {d.secondsSince1970 + seconds}; }
/// The instant `seconds` before `d`.
constexpr Date operator-(Date d, double seconds) { return {d.secondsSince1970 - seconds}; }

}  // namespace tollbeam
