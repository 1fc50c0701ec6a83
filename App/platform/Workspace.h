#pragma once

#include <functional>

#include "platform/Port.h"
#include "platform/Subscription.h"

namespace tollbeam {

/// The machine's sleep and wake. Where the system reports neither, no callback ever comes.
class Workspace : public Port {
 public:
  /// Calls `callback` before the machine sleeps; within the system's own bound, the sleep waits
  /// until all callbacks have returned.
  virtual Subscription onWillSleep(std::function<void()> callback) = 0;

  /// Calls `callback` after the machine woke.
  virtual Subscription onDidWake(std::function<void()> callback) = 0;
};

}  // namespace tollbeam
