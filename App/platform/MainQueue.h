#pragma once

#include <cstdlib>
#include <functional>

#include "platform/Port.h"
#include "platform/Subscription.h"

namespace tollbeam {

/// The main thread's queue: the whole program runs there, one piece of work after the other.
class MainQueue : public Port {
 public:
  /// Whether the caller runs on the main thread. For any thread.
  [[nodiscard]] virtual bool isCurrent() const = 0;

  /// Runs `work` later, after what was queued before it. For any thread.
  virtual void async(std::function<void()> work) = 0;

  /// Runs `work` once, `seconds` from now; time asleep does not count.
  virtual void after(double seconds, std::function<void()> work) = 0;

  /// Runs `work` every `seconds` until the subscription dies; time asleep does not count. Each time
  /// it may be off by up to `tolerance` seconds, so that the system can wake once for several
  /// programs.
  virtual Subscription every(double seconds, double tolerance, std::function<void()> work) = 0;
};

/// Stops the process when the caller is not on the main thread: work that arrives elsewhere is a
/// programming fault, and going on would corrupt what has no locks.
inline void requireMainThread(const MainQueue& queue) {
  if (!queue.isCurrent()) std::abort();
}

}  // namespace tollbeam
