// The user's calendar and time zone, daylight saving included. Every call uses the zone that is in
// force at the call, so a traveller needs no restart.
#pragma once

#include <chrono>
#include <compare>
#include <optional>

#include "platform/Date.h"

namespace tollbeam {

struct TimeOfDay {
  int hour = 0;    ///< 0 to 23
  int minute = 0;  ///< 0 to 59

  /// Whether a clock ever shows it.
  [[nodiscard]] bool isOnAClock() const {
    return 0 <= hour && hour < 24 && 0 <= minute && minute < 60;
  }

  friend auto operator<=>(const TimeOfDay&, const TimeOfDay&) = default;
};

/// A date on the calendar's page, without a place or a time.
struct CalendarDay {
  int year = 1970;
  int month = 1;  ///< 1 to 12
  int day = 1;    ///< 1 to 31

  /// The page `days` further, or back when negative. Days that a place skipped (Samoa's 30 December
  /// 2011) count like any other.
  [[nodiscard]] CalendarDay plusDays(int days) const {
    using namespace std::chrono;
    const year_month_day moved{sys_days{std::chrono::year{year} / month / day} +
                               std::chrono::days{days}};
    return {static_cast<int>(moved.year()), static_cast<int>(static_cast<unsigned>(moved.month())),
            static_cast<int>(static_cast<unsigned>(moved.day()))};
  }

  friend auto operator<=>(const CalendarDay&, const CalendarDay&) = default;
};

class Calendar {
 public:
  Calendar() = default;
  Calendar(const Calendar&) = delete;
  Calendar& operator=(const Calendar&) = delete;
  virtual ~Calendar() = default;

  /// The local wall-clock time; 00:00 for an instant that the calendar cannot name.
  [[nodiscard]] virtual TimeOfDay timeOfDay(Date instant) const = 0;

  /// The local date; 1 January 1970 for an instant that the calendar cannot name.
  [[nodiscard]] virtual CalendarDay day(Date instant) const = 0;

  /// The first instant of that date: its midnight (the first of two), or where the clock jumps over
  /// midnight, or over the whole date, the first instant after the jump. Absent for a date that the
  /// calendar cannot place.
  [[nodiscard]] virtual std::optional<Date> startOfDay(CalendarDay day) const = 0;

  /// The instant at which that date's clock shows `time` (the first of two), or where the clock
  /// jumps over it, the first instant after the jump. Absent for a time that is on no clock and for
  /// a date that the calendar cannot place.
  [[nodiscard]] virtual std::optional<Date> instant(CalendarDay day, TimeOfDay time) const = 0;
};

}  // namespace tollbeam
