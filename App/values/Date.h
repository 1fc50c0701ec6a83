// An instant: seconds since 1970-01-01 00:00:00 UTC. Differences are plain seconds. There is no
// "now" here: time is an argument of every rule, so that a test decides what time it is.
#pragma once

#include <compare>

namespace tollbeam {

struct Date {
  double secondsSince1970 = 0;

  /// Before anything that can have happened: the first day of the year 1.
  static constexpr Date distantPast() { return {-62135769600.0}; }

  friend constexpr auto operator<=>(const Date&, const Date&) = default;
};

constexpr double operator-(Date a, Date b) { return a.secondsSince1970 - b.secondsSince1970; }
constexpr Date operator+(Date d, double seconds) { return {d.secondsSince1970 + seconds}; }
constexpr Date operator-(Date d, double seconds) { return {d.secondsSince1970 - seconds}; }

}  // namespace tollbeam
