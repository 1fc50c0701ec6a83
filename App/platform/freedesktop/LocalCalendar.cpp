#include "platform/freedesktop/LocalCalendar.h"

#include <cmath>
#include <ctime>

namespace tollbeam {

TimeOfDay LocalCalendar::timeOfDay(Date instant) const {
  const double seconds = std::floor(instant.secondsSince1970);
  // Beyond this no year has a number that the C library can hold; it also keeps the conversion
  // defined for infinities and for what is no number.
  constexpr double kFarthest = 6e16;
  if (!(std::fabs(seconds) < kFarthest)) return {};
  const auto time = static_cast<std::time_t>(seconds);
  std::tm local{};
  // localtime_r alone keeps the zone that was in force when it was first called.
  ::tzset();
  if (!::localtime_r(&time, &local)) return {};
  return {.hour = local.tm_hour, .minute = local.tm_min};
}

}  // namespace tollbeam
