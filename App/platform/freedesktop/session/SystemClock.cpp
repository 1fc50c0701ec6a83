#include "platform/freedesktop/session/SystemClock.h"

#include <chrono>
#include <ctime>

namespace tollbeam {

Date SystemClock::now() const {
  const auto since1970 = std::chrono::system_clock::now().time_since_epoch();
  return {std::chrono::duration<double>(since1970).count()};
}

double SystemClock::uptime() const {
  // Unlike the monotonic clock it does not stand still while the machine sleeps.
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

}  // namespace tollbeam
