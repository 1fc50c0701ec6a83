#pragma once

#include <optional>

#include "platform/Port.h"
#include "values/CalendarDay.h"
#include "values/Date.h"
#include "values/TimeOfDay.h"

namespace tollbeam {

/// The user's calendar and time zone, daylight saving included. Every call uses the zone that is in
/// force at the call, so a traveller needs no restart.
class Calendar : public Port {
 public:
  /// The local wall-clock time; 00:00 for an instant beyond the range of the calendar.
  [[nodiscard]] virtual TimeOfDay timeOfDay(Date instant) const = 0;

  /// The local date; 1 January 1970 for an instant beyond the range of the calendar.
  [[nodiscard]] virtual CalendarDay day(Date instant) const = 0;

  /// The first instant of that date: its midnight (the first of two), or where the clock jumps over
  /// midnight or over the whole date, the first instant after the jump. Absent for a date beyond
  /// the range of the calendar.
  [[nodiscard]] virtual std::optional<Date> startOfDay(CalendarDay day) const = 0;

  /// The instant at which the clock shows `time` on that date (the first of two), or where the
  /// clock jumps over it, the first instant after the jump. Absent when no clock shows such a time,
  /// and for a date beyond the range of the calendar.
  [[nodiscard]] virtual std::optional<Date> instant(CalendarDay day, TimeOfDay time) const = 0;
};

}  // namespace tollbeam
