// The machine's two clocks: the one that is set, and the one that counts since it started.
#pragma once

#include "platform/Clock.h"

namespace tollbeam {

class SystemClock final : public Clock {
 public:
  [[nodiscard]] Date now() const override;
  [[nodiscard]] double uptime() const override;
};

}  // namespace tollbeam
