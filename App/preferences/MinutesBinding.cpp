#include "preferences/MinutesBinding.h"

#include <limits>

#include "preferences/Prefs.h"

namespace tollbeam {

Date timeOfMinutes(std::int64_t minutes, Date now, const Calendar& calendar) {
  const std::int64_t hour = minutes / 60;
  // A larger number must not become a valid hour by losing its high bits.
  if (hour < std::numeric_limits<int>::min() || hour > std::numeric_limits<int>::max()) return now;
  const TimeOfDay time{.hour = static_cast<int>(hour), .minute = static_cast<int>(minutes % 60)};
  return calendar.instant(calendar.day(now), time).value_or(now);
}

TimeOfDay MinutesBinding::time() const {
  return calendar_.timeOfDay(timeOfMinutes(store_.integerForKey(key_), clock_.now(), calendar_));
}

TimeOfDay MinutesBinding::onTodaysClock(TimeOfDay time) const {
  const auto instant = calendar_.instant(calendar_.day(clock_.now()), time);
  return instant ? calendar_.timeOfDay(*instant) : time;
}

void MinutesBinding::setTime(TimeOfDay chosen) {
  const TimeOfDay time = onTodaysClock(chosen);
  store_.set(key_, minutesAfterMidnight(time.hour, time.minute));
}

}  // namespace tollbeam
