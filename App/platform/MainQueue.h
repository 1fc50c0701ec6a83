// The main thread's queue: everything in Tollbeam runs there, one piece after the other.
#pragma once

#include <functional>

#include "platform/Subscription.h"

namespace tollbeam {

class MainQueue {
 public:
  MainQueue() = default;
  MainQueue(const MainQueue&) = delete;
  MainQueue& operator=(const MainQueue&) = delete;
  virtual ~MainQueue() = default;

  /// Whether the caller runs on the main thread.
  [[nodiscard]] virtual bool isCurrent() const = 0;

  /// Runs `work` on the main thread later, in order. May be called on any thread.
  virtual void async(std::function<void()> work) = 0;

  /// Runs `work` once, `seconds` from now. Main thread only.
  virtual void after(double seconds, std::function<void()> work) = 0;

  /// Runs `work` every `seconds` until the subscription dies. Each firing may be up to `tolerance`
  /// seconds late, so that the system can wake once for several programs. Main thread only.
  virtual Subscription every(double seconds, double tolerance, std::function<void()> work) = 0;
};

/// Stops the process when the caller is not on the main thread: work that arrives elsewhere is a
/// programming fault, and going on would corrupt what has no locks.
void requireMainThread(const MainQueue& queue);

}  // namespace tollbeam
