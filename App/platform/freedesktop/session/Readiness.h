// "Ready" once: when the services have given their first answers, or when waiting longer would keep
// the user waiting. Main thread only.
#pragma once

#include <QTimer>
#include <chrono>
#include <functional>
#include <utility>

#include "platform/Subscription.h"

namespace tollbeam {

class Readiness {
 public:
  /// Becomes ready by itself after `limit`.
  explicit Readiness(std::chrono::milliseconds limit) {
    timer_.setSingleShot(true);
    timer_.callOnTimeout(&timer_, [this] { markReady(); });
    timer_.start(limit);
  }

  [[nodiscard]] bool isReady() const { return ready_; }

  void markReady() {
    ready_ = true;
    timer_.stop();
    waiting_.notify();
  }

  /// Calls `callback` once, never before this returns; soon when it is ready already.
  Subscription whenReady(std::function<void()> callback) {
    auto once = [callback = std::move(callback), called = false]() mutable {
      if (!std::exchange(called, true)) callback();
    };
    auto subscription = waiting_.add(std::move(once));
    if (ready_) timer_.start(std::chrono::milliseconds(0));
    return subscription;
  }

 private:
  QTimer timer_;
  bool ready_ = false;
  Observers<> waiting_;
};

}  // namespace tollbeam
