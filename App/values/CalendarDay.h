#pragma once

#include <chrono>
#include <compare>

namespace tollbeam {

/// A date on the calendar, without a place or a time.
struct CalendarDay {
  int year = 1970;  ///< of the Gregorian calendar
  int month = 1;    ///< 1 to 12
  int day = 1;      ///< 1 to 31

  /// The date `days` later, or earlier when negative. Days that a place skipped (Samoa's
  /// 30 December 2011) count like any other.
  [[nodiscard]] CalendarDay plusDays(int days) const {
    using namespace std::chrono;
    const year_month_day moved{sys_days{std::chrono::year{year} / month / day} +
                               std::chrono::days{days}};
    return {static_cast<int>(moved.year()), static_cast<int>(static_cast<unsigned>(moved.month())),
            static_cast<int>(static_cast<unsigned>(moved.day()))};
  }

  /// The earlier one is less.
  friend auto operator<=>(const CalendarDay&, const CalendarDay&) = default;
};

}  // namespace tollbeam
