// Holds announcements back in a sleep and for a while after it. Services and the kernel tell right
// after a wake what changed meanwhile, and that is no news: the look that takes it in without a
// word comes three seconds after the wake, and must come first. Main thread only.
#pragma once

#include <QTimer>
#include <functional>

#include "platform/Subscription.h"
#include "platform/Workspace.h"

namespace tollbeam {

class SleepHold {
 public:
  /// Calls `released` at the end of each hold, 3.5 seconds after the wake.
  SleepHold(Workspace& workspace, std::function<void()> released);

  /// From the announcement of a sleep on, until `released`.
  [[nodiscard]] bool isHolding() const { return holding_; }

 private:
  bool holding_ = false;
  QTimer untilRelease_;
  Subscription willSleep_;
  Subscription didWake_;
};

}  // namespace tollbeam
