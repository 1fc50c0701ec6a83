#include "platform/freedesktop/LocalCalendar.h"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace tollbeam {

namespace {

// Beyond this no year has a number that the C library can hold; it also keeps conversions defined
// for infinities and for what is no number.
constexpr double kFarthest = 6e16;

// No zone was ever further from UTC than this.
constexpr std::time_t kFarthestFromUtc = std::time_t{26} * 3600;

std::optional<std::tm> local(std::time_t time) {
  std::tm fields{};
  if (!::localtime_r(&time, &fields)) return std::nullopt;
  return fields;
}

std::optional<std::tm> local(Date instant) {
  const double seconds = std::floor(instant.secondsSince1970);
  if (!(std::fabs(seconds) < kFarthest)) return std::nullopt;
  // localtime_r alone keeps the zone that was in force when it was first called.
  ::tzset();
  return local(static_cast<std::time_t>(seconds));
}

CalendarDay dayOf(const std::tm& fields) {
  return {.year = fields.tm_year + 1900, .month = fields.tm_mon + 1, .day = fields.tm_mday};
}

std::tm midnight(CalendarDay day) {
  std::tm fields{};
  fields.tm_year = day.year - 1900;
  fields.tm_mon = day.month - 1;
  fields.tm_mday = day.day;
  return fields;
}

// Midnight as the clock shows it, the first where it shows it twice; absent where it never does.
std::optional<std::time_t> shownMidnight(CalendarDay day) {
  std::optional<std::time_t> first;
  for (const int daylightSaving : {1, 0, -1}) {
    std::tm fields = midnight(day);
    fields.tm_isdst = daylightSaving;
    const std::time_t time = ::mktime(&fields);
    const auto shown = local(time);
    const bool isMidnight = shown && dayOf(*shown) == day && shown->tm_hour == 0 &&
                            shown->tm_min == 0 && shown->tm_sec == 0;
    if (isMidnight && (!first || time < *first)) first = time;
  }
  return first;
}

// The first instant whose local date is this one or later: where the clock jumps over midnight.
std::optional<std::time_t> firstAfterJump(CalendarDay day) {
  std::tm fields = midnight(day);
  const std::time_t utcMidnight = ::timegm(&fields);
  std::time_t before = utcMidnight - kFarthestFromUtc;
  std::time_t after = utcMidnight + kFarthestFromUtc;
  while (after - before > 1) {
    const std::time_t middle = before + (after - before) / 2;
    const auto shown = local(middle);
    if (!shown) return std::nullopt;
    (dayOf(*shown) < day ? before : after) = middle;
  }
  return after;
}

}  // namespace

TimeOfDay LocalCalendar::timeOfDay(Date instant) const {
  const auto fields = local(instant);
  if (!fields) return {};
  return {.hour = fields->tm_hour, .minute = fields->tm_min};
}

CalendarDay LocalCalendar::day(Date instant) const {
  const auto fields = local(instant);
  return fields ? dayOf(*fields) : CalendarDay{};
}

std::optional<Date> LocalCalendar::startOfDay(CalendarDay day) const {
  ::tzset();
  const auto start = shownMidnight(day);
  const auto found = start ? start : firstAfterJump(day);
  if (!found) return std::nullopt;
  return Date{static_cast<double>(*found)};
}

}  // namespace tollbeam
