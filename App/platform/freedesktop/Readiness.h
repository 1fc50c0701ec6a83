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

  /// The same, but when `worthIt` holds at the limit it waits on until `longerLimit`; both count
  /// from here.
  Readiness(std::chrono::milliseconds limit, std::chrono::milliseconds longerLimit,
            std::function<bool()> worthIt);

  [[nodiscard]] bool isReady() const { return ready_; }

  /// Whether the first limit has passed.
  [[nodiscard]] bool isLate() const { return late_; }

  void markReady();

  /// Calls `callback` once, never before this returns; soon when it is ready already.
  Subscription whenReady(std::function<void()> callback);

 private:
  void onLimit();

  const std::chrono::milliseconds extension_;
  const std::function<bool()> worthIt_;
  QTimer timer_;
  bool late_ = false;
  bool ready_ = false;
  Observers<> waiting_;
};

}  // namespace tollbeam
