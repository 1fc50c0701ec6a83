#include "platform/freedesktop/session/LocalCalendar.h"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace tollbeam {

namespace {

// Beyond this the C library cannot hold the year's number. The bound also keeps infinities and NaN
// out of the conversions.
constexpr double kFarthest = 6e16;

// No zone was ever further from UTC.
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

// What a local clock shows.
struct Wall {
  CalendarDay day;
  TimeOfDay time;
  int second = 0;

  friend auto operator<=>(const Wall&, const Wall&) = default;
};

Wall wallOf(const std::tm& fields) {
  return {.day = dayOf(fields),
          .time = {.hour = fields.tm_hour, .minute = fields.tm_min},
          .second = fields.tm_sec};
}

// The instant at which a clock in UTC shows it.
std::time_t inUtc(const Wall& wall) {
  std::tm fields{};
  fields.tm_year = wall.day.year - 1900;
  fields.tm_mon = wall.day.month - 1;
  fields.tm_mday = wall.day.day;
  fields.tm_hour = wall.time.hour;
  fields.tm_min = wall.time.minute;
  return ::timegm(&fields);
}

// The first instant at which the local clock shows it; absent where it never does. Tries every
// offset from UTC that is in force around then: no clock was ever changed twice in half the probes'
// distance.
std::optional<std::time_t> firstShowing(const Wall& wall) {
  constexpr std::time_t kProbes = 4;
  const std::time_t utc = inUtc(wall);
  std::optional<std::time_t> first;
  for (std::time_t probe = -kProbes; probe <= kProbes; ++probe) {
    const auto around = local(utc + probe * (kFarthestFromUtc / kProbes));
    if (!around) continue;
    const std::time_t candidate = utc - around->tm_gmtoff;
    const auto shown = local(candidate);
    if (shown && wallOf(*shown) == wall && (!first || candidate < *first)) first = candidate;
  }
  return first;
}

// The first instant at which the local clock is past it, for a time that the clock jumps over.
std::optional<std::time_t> firstAfterJump(const Wall& wall) {
  std::time_t before = inUtc(wall) - kFarthestFromUtc;
  std::time_t after = inUtc(wall) + kFarthestFromUtc;
  while (after - before > 1) {
    const std::time_t middle = before + (after - before) / 2;
    const auto shown = local(middle);
    if (!shown) return std::nullopt;
    (wallOf(*shown) < wall ? before : after) = middle;
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

std::optional<Date> LocalCalendar::startOfDay(CalendarDay day) const { return instant(day, {}); }

std::optional<Date> LocalCalendar::instant(CalendarDay day, TimeOfDay time) const {
  if (!time.isOnAClock()) return std::nullopt;
  ::tzset();
  const Wall wall{.day = day, .time = time};
  const auto shown = firstShowing(wall);
  const auto found = shown ? shown : firstAfterJump(wall);
  if (!found) return std::nullopt;
  return Date{static_cast<double>(*found)};
}

}  // namespace tollbeam
