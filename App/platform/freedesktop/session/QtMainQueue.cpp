#include "platform/freedesktop/session/QtMainQueue.h"

#include <QPointer>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

namespace tollbeam {

namespace {

std::chrono::milliseconds millisecondsUpTo(double seconds) {
  const double milliseconds = std::ceil(seconds * 1000);
  // The negated comparison also rejects NaN.
  if (!(milliseconds > 0)) return {};
  return std::chrono::milliseconds(
      static_cast<int>(std::min(milliseconds, double{std::numeric_limits<int>::max()})));
}

}  // namespace

bool QtMainQueue::isCurrent() const { return QThread::currentThread() == context_.thread(); }

void QtMainQueue::async(std::function<void()> work) {
  QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
}

void QtMainQueue::after(double seconds, std::function<void()> work) {
  QTimer::singleShot(millisecondsUpTo(seconds), Qt::PreciseTimer, &context_, std::move(work));
}

Subscription QtMainQueue::every(double seconds, double tolerance, std::function<void()> work) {
  auto* timer = new QTimer(&context_);
  // Programs that all wake at full seconds wake the processor once.
  timer->setTimerType(tolerance >= 1 ? Qt::VeryCoarseTimer : Qt::PreciseTimer);
  timer->callOnTimeout(timer, std::move(work));
  timer->start(millisecondsUpTo(seconds));
  // The queue may be destroyed before the subscription. Deleted later, because the subscription may
  // end while the timer fires.
  return Subscription(std::shared_ptr<void>(timer, [guard = QPointer(timer)](void*) {
    if (!guard) return;
    guard->stop();
    guard->disconnect();
    guard->deleteLater();
  }));
}

}  // namespace tollbeam
