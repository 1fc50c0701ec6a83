#include "ui/chart/ChartTicks.h"

#include <cmath>

namespace tollbeam {

namespace {

constexpr int kDaysOfHours = 9;
constexpr int kMostDays = 63;

std::vector<DaySpan> spans(Date from, Date now, const Calendar& calendar, int most) {
  // Bounds the loop; the calendar says how long days are.
  constexpr double kLongestDay = 25 * 3600.0;
  std::vector<DaySpan> result;
  if (!(from < now) || !(now - from <= most * kLongestDay)) return result;
  CalendarDay day = calendar.day(from);
  auto start = calendar.startOfDay(day);
  for (int i = 0; i < most && start && *start <= now; ++i) {
    const CalendarDay next = day.plusDays(1);
    const auto end = calendar.startOfDay(next);
    if (!end) break;
    if (*start < *end) result.push_back({.day = day, .start = *start, .end = *end});
    day = next;
    start = end;
  }
  return result;
}

// The first instant of the day at which its clock shows the hour or a later one. Whole seconds
// suffice, because clocks change at whole seconds.
Date firstAtOrAfter(int hour, const DaySpan& span, const Calendar& calendar) {
  double before = std::floor(span.start.secondsSince1970) - 1;
  double after = std::ceil(span.end.secondsSince1970);
  while (after - before > 1) {
    const double middle = std::floor((before + after) / 2);
    const bool reached =
        middle >= span.start.secondsSince1970 && calendar.timeOfDay(Date{middle}).hour >= hour;
    (reached ? after : before) = middle;
  }
  return Date{after};
}

}  // namespace

std::vector<HourTick> hourTicks(Date from, Date now, const Calendar& calendar) {
  std::vector<HourTick> ticks;
  for (const DaySpan& span : spans(from, now, calendar, kDaysOfHours)) {
    for (const int hour : {0, 6, 12, 18}) {
      const Date at = hour == 0 ? span.start : firstAtOrAfter(hour, span, calendar);
      if (at < from || at > now || at >= span.end) continue;
      ticks.push_back({.hour = hour, .at = at, .shown = calendar.timeOfDay(at)});
    }
  }
  return ticks;
}

std::vector<DaySpan> daySpans(Date from, Date now, const Calendar& calendar) {
  return spans(from, now, calendar, kMostDays);
}

}  // namespace tollbeam
