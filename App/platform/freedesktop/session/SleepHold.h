// Holds announcements back from a sleep until shortly after the wake. Services and the kernel
// report right after a wake what the sleep changed; the refresh that takes these changes in without
// an alert comes three seconds after the wake and must come first. Main thread only.
#pragma once

#include <QTimer>
#include <functional>

#include "platform/Workspace.h"

namespace tollbeam {

class SleepHold {
 public:
  /// `workspace` outlives this object.
  explicit SleepHold(Workspace& workspace);

  /// True from the announcement of a sleep until 3.5 seconds after the wake.
  [[nodiscard]] bool isHolding() const { return holding_; }

  /// Calls `callback` at the end of each hold.
  Subscription onRelease(std::function<void()> callback);

 private:
  bool holding_ = false;
  QTimer untilRelease_;
  Observers<> released_;
  Subscription willSleep_;
  Subscription didWake_;
};

}  // namespace tollbeam
