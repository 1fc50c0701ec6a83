// "Ready" once: when the services have given their first answers, or when waiting longer would keep
// the user waiting. Main thread only.
#pragma once

#include <QTimer>
#include <chrono>
#include <functional>

#include "platform/Subscription.h"

namespace tollbeam {

class Readiness {
 public:
  /// Becomes ready by itself after `limit`.
  explicit Readiness(std::chrono::milliseconds limit);

  [[nodiscard]] bool isReady() const { return ready_; }
  void markReady();

  /// Calls `callback` once, never before this returns; soon when it is ready already.
  Subscription whenReady(std::function<void()> callback);

 private:
  QTimer timer_;
  bool ready_ = false;
  Observers<> waiting_;
};

}  // namespace tollbeam
