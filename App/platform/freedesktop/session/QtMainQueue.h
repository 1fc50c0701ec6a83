// Qt's event loop as the main queue. Constructed on the main thread. Timers count only the time
// that the machine is awake; for a wall-clock deadline compare instants instead.
#pragma once

#include <QObject>

#include "platform/MainQueue.h"

namespace tollbeam {

class QtMainQueue final : public MainQueue {
 public:
  [[nodiscard]] bool isCurrent() const override;
  void async(std::function<void()> work) override;

  /// Never early. Up to 24 days ahead. Work still waiting when the queue is destroyed is dropped.
  void after(double seconds, std::function<void()> work) override;

  /// With a tolerance of a second or more it fires at full seconds, the first time up to half a
  /// second early; otherwise never early. Firings do not drift; those that were missed while the
  /// thread was busy are not made up for.
  Subscription every(double seconds, double tolerance, std::function<void()> work) override;

 private:
  QObject context_;
};

}  // namespace tollbeam
