#pragma once

#include <functional>

#include "platform/Port.h"
#include "platform/Subscription.h"

namespace tollbeam {

/// The system's Low Power Mode.
class ProcessInfo : public Port {
 public:
  /// Whether it is on; false where the system has no such mode.
  [[nodiscard]] virtual bool isLowPowerModeEnabled() const = 0;

  /// Calls `changed` after the mode was switched. A switch during a sleep or in the first three
  /// seconds after it is reported after those three seconds.
  virtual Subscription onPowerStateChange(std::function<void()> changed) = 0;
};

}  // namespace tollbeam
