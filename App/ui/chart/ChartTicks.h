// Where the time axis of the chart has its marks. They come from the calendar: a day may have 23 or
// 25 hours, begin at one o'clock or be missing altogether, and a zone may be half an hour off.
#pragma once

#include <vector>

#include "platform/Calendar.h"
#include "values/Date.h"

namespace tollbeam {

struct HourTick {
  int hour = 0;     ///< 0, 6, 12 or 18: the mark's hour on the calendar
  Date at;          ///< its instant; where the clock jumps over that hour, the jump
  TimeOfDay shown;  ///< what the clock shows then: the hour itself, or where the jump ends

  friend bool operator==(const HourTick&, const HourTick&) = default;
};

/// The marks in [from, now], in order. None for more than a week.
[[nodiscard]] std::vector<HourTick> hourTicks(Date from, Date now, const Calendar& calendar);

struct DaySpan {
  CalendarDay day;
  Date start;  ///< the day's first instant
  Date end;    ///< the next day's

  friend bool operator==(const DaySpan&, const DaySpan&) = default;
};

/// The days that overlap [from, now], whole, in order, without those that a place skipped. None for
/// more than two months.
[[nodiscard]] std::vector<DaySpan> daySpans(Date from, Date now, const Calendar& calendar);

}  // namespace tollbeam
