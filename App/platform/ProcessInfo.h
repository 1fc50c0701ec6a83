// The system's Low Power Mode. Main thread only.
#pragma once

#include <functional>

#include "platform/Subscription.h"

namespace tollbeam {

class ProcessInfo {
 public:
  ProcessInfo() = default;
  ProcessInfo(const ProcessInfo&) = delete;
  ProcessInfo& operator=(const ProcessInfo&) = delete;
  virtual ~ProcessInfo() = default;

  /// False where the system has no such mode.
  [[nodiscard]] virtual bool isLowPowerModeEnabled() const = 0;

  /// Calls `changed` on the main thread when the mode was switched. A switch in a sleep, or in the
  /// first three seconds after it, is told later than those.
  virtual Subscription onPowerStateChange(std::function<void()> changed) = 0;
};

}  // namespace tollbeam
