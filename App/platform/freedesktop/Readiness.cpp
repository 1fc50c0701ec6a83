#include "platform/freedesktop/Readiness.h"

#include <utility>

namespace tollbeam {

Readiness::Readiness(std::chrono::milliseconds limit)
    : Readiness(limit, limit, [] { return false; }) {}

Readiness::Readiness(std::chrono::milliseconds limit, std::chrono::milliseconds longerLimit,
                     std::function<bool()> worthIt)
    : extension_(longerLimit - limit), worthIt_(std::move(worthIt)) {
  timer_.setSingleShot(true);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { onLimit(); });
  timer_.start(limit);
}

void Readiness::onLimit() {
  if (!ready_ && !std::exchange(late_, true) && worthIt_()) {
    timer_.start(extension_);
  } else {
    markReady();
  }
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
