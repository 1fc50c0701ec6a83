#include "recorded/ManualClock.h"

#include <algorithm>
#include <utility>

namespace tollbeam {

void ManualQueue::async(std::function<void()> work) { waiting_.push_back(std::move(work)); }

void ManualQueue::after(double seconds, std::function<void()> work) {
  auto kept = std::make_shared<std::function<void()>>(std::move(work));
  timers_.push_back({.due = clock_.awake() + seconds, .interval = 0, .work = kept, .kept = kept});
}

Subscription ManualQueue::every(double seconds, double, std::function<void()> work) {
  auto kept = std::make_shared<std::function<void()>>(std::move(work));
  timers_.push_back(
      {.due = clock_.awake() + seconds, .interval = seconds, .work = kept, .kept = {}});
  return Subscription(std::move(kept));
}

void ManualQueue::drain() {
  while (!waiting_.empty()) {
    const auto work = std::move(waiting_.front());
    waiting_.pop_front();
    work();
  }
}

void ManualQueue::advanceTo(Date instant) {
  drain();
  const double end = clock_.awake() + (instant - clock_.now());
  for (;;) {
    timers_.remove_if([](const Timer& timer) { return timer.work.expired(); });
    const auto next =
        std::min_element(timers_.begin(), timers_.end(),
                         [](const Timer& x, const Timer& y) { return x.due < y.due; });
    if (next == timers_.end() || next->due > end) break;
    clock_.setAwake(next->due);
    const auto work = next->work.lock();
    if (next->interval > 0) {
      next->due += next->interval;
    } else {
      timers_.erase(next);
    }
    (*work)();
    drain();
  }
  clock_.setAwake(end);
}

}  // namespace tollbeam
