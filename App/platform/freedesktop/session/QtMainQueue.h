// Qt's event loop as the main queue. Made on the main thread. Timers count the time that the
// machine is awake; whoever needs a wall-clock deadline compares instants instead.
#pragma once

#include <QObject>

#include "platform/MainQueue.h"

namespace tollbeam {

class QtMainQueue final : public MainQueue {
 public:
  [[nodiscard]] bool isCurrent() const override;
  void async(std::function<void()> work) override;

  /// Never early. Up to 24 days ahead. Work that the queue does not live to see is dropped.
  void after(double seconds, std::function<void()> work) override;

  /// Never early, and never later than `tolerance` allows unless the thread is busy. Firings do not
  /// drift; those that were missed while the thread was busy are not made up for.
  Subscription every(double seconds, double tolerance, std::function<void()> work) override;

 private:
  QObject context_;
};

}  // namespace tollbeam
