// The user's calendar and time zone, daylight saving included. Every call uses the zone that is in
// force at the call, so a traveller needs no restart.
#pragma once

#include <optional>

#include "values/CalendarDay.h"
#include "values/Date.h"
#include "values/TimeOfDay.h"

namespace tollbeam {

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
