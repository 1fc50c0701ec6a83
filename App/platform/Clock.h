// What time it is. Only the model asks; rules take the time as an argument.
#pragma once

#include "values/Date.h"

namespace tollbeam {

class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  /// The wall clock. It jumps when the user or the network sets it.
  [[nodiscard]] virtual Date now() const = 0;

  /// Seconds on a clock that nobody sets and that counts the time asleep, too. Only differences
  /// have a meaning: the instant from which it counts is arbitrary, and differs between starts.
  [[nodiscard]] virtual double uptime() const = 0;
};

}  // namespace tollbeam
