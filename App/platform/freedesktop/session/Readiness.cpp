#include "platform/freedesktop/session/Readiness.h"

#include <utility>

namespace tollbeam {

Readiness::Readiness(std::chrono::milliseconds limit) {
  timer_.setSingleShot(true);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { markReady(); });
  timer_.start(limit);
}

void Readiness::markReady() {
  ready_ = true;
  timer_.stop();
  waiting_.notify();
}

Subscription Readiness::whenReady(std::function<void()> callback) {
  auto once = [callback = std::move(callback), called = false]() mutable {
    if (!std::exchange(called, true)) callback();
  };
  auto subscription = waiting_.add(std::move(once));
  if (ready_) timer_.start(std::chrono::milliseconds(0));
  return subscription;
}

}  // namespace tollbeam
