// Waiting for a condition, never for a time.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace tollbeam::test {

/// Milliseconds. Only catches what hangs: on a busy machine everything may take many times as long.
constexpr int kPatience = 60000;

/// Runs the event loop until `condition` holds; false when it does not within the patience.
template <typename Condition>
bool waitFor(Condition condition) {
  const QDeadlineTimer deadline(kPatience);
  // Wakes the loop for conditions that no event of ours makes true.
  QTimer again;
  again.start(10);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

}  // namespace tollbeam::test
