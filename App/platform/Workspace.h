// The machine's sleep and wake. Where the system tells neither, no callback ever comes.
#pragma once

#include <functional>

#include "platform/Subscription.h"

namespace tollbeam {

class Workspace {
 public:
  Workspace() = default;
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
  virtual ~Workspace() = default;

  /// Called on the main thread before the machine sleeps; sleep waits (within the system's own
  /// bound) until the callbacks have returned.
  virtual Subscription onWillSleep(std::function<void()> callback) = 0;

  /// Called on the main thread after the machine woke.
  virtual Subscription onDidWake(std::function<void()> callback) = 0;
};

}  // namespace tollbeam
