// The machine's clock. It jumps when the user or the network sets it.
#pragma once

#include "platform/Clock.h"

namespace tollbeam {

class SystemClock final : public Clock {
 public:
  [[nodiscard]] Date now() const override;
};

}  // namespace tollbeam
