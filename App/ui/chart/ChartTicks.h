// The marks of the chart's time axis, by the user's calendar: a day may have 23 or 25 hours, begin
// at one o'clock or be skipped, and a time zone may differ by half an hour.
#pragma once

#include <vector>

#include "platform/Calendar.h"
#include "values/Date.h"

namespace tollbeam {

struct HourTick {
  int hour = 0;     ///< 0, 6, 12 or 18
  Date at;          ///< where the clock skips that hour, the instant after the skip
  TimeOfDay shown;  ///< what the clock shows at that instant, usually the full hour

  friend bool operator==(const HourTick&, const HourTick&) = default;
};

/// The marks in [from, now], in order; none for a range longer than about a week.
[[nodiscard]] std::vector<HourTick> hourTicks(Date from, Date now, const Calendar& calendar);

struct DaySpan {
  CalendarDay day;
  Date start;  ///< the first instant of the day
  Date end;    ///< the first instant of the next day

  friend bool operator==(const DaySpan&, const DaySpan&) = default;
};

/// The days that overlap [from, now], in order, without skipped ones; none for a range longer than
/// about two months.
[[nodiscard]] std::vector<DaySpan> daySpans(Date from, Date now, const Calendar& calendar);

}  // namespace tollbeam
