// What time it is. Only the model asks; rules are told.
#pragma once

#include "platform/Date.h"

namespace tollbeam {

class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;

  [[nodiscard]] virtual Date now() const = 0;
};

}  // namespace tollbeam
