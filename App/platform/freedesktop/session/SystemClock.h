// The machine's two clocks: the wall clock, which can be set, and the time since the start.
#pragma once

#include <chrono>
#include <ctime>

#include "platform/Clock.h"

namespace tollbeam {

class SystemClock final : public Clock {
 public:
  [[nodiscard]] Date now() const override {
    const auto since1970 = std::chrono::system_clock::now().time_since_epoch();
    return {std::chrono::duration<double>(since1970).count()};
  }

  [[nodiscard]] double uptime() const override {
    // Unlike CLOCK_MONOTONIC it goes on while the machine sleeps.
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
  }
};

}  // namespace tollbeam
