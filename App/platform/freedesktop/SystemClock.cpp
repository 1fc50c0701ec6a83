#include "platform/freedesktop/SystemClock.h"

#include <chrono>

namespace tollbeam {

Date SystemClock::now() const {
  const auto since1970 = std::chrono::system_clock::now().time_since_epoch();
  return {std::chrono::duration<double>(since1970).count()};
}

}  // namespace tollbeam
