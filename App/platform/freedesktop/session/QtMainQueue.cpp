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

using MonotonicSeconds = std::chrono::duration<double>;

double monotonicNow() {
  return MonotonicSeconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

int millisecondsUpTo(double seconds) {
  const double milliseconds = std::ceil(seconds * 1000);
  // The negation also catches what is no number.
  if (!(milliseconds > 0)) return 0;
  return static_cast<int>(std::min(milliseconds, double{std::numeric_limits<int>::max()}));
}

/// The longest round step of time within the tolerance. Programs that all wake at round instants
/// wake the processor once; Qt's own coarse timers would do so too, but may come early.
double roundStep(double tolerance) {
  for (const double step : {60.0, 30.0, 10.0, 5.0, 2.0, 1.0}) {
    if (step <= tolerance) return step;
  }
  return 0;
}

class RepeatingTimer : public QTimer {
 public:
  RepeatingTimer(double interval, double tolerance, QObject* parent)
      : QTimer(parent), interval_(interval), step_(roundStep(tolerance)), due_(monotonicNow()) {
    setTimerType(Qt::PreciseTimer);
    setSingleShot(true);
  }

  void startNext() {
    const double now = monotonicNow();
    due_ += interval_;
    // After a long block of the thread, on with the first instant of the same rhythm that is ahead.
    if (due_ <= now && interval_ > 0) due_ += interval_ * std::ceil((now - due_) / interval_);
    const double firing = step_ > 0 ? std::ceil(due_ / step_) * step_ : due_;
    start(millisecondsUpTo(firing - now));
  }

 private:
  double interval_;
  double step_;
  double due_;
};

/// The timer dies with the subscription, or with the queue if that ends first. Later, because the
/// subscription may end while the timer fires.
Subscription owner(QTimer* timer) {
  return Subscription(std::shared_ptr<void>(timer, [guard = QPointer(timer)](void*) {
    if (!guard) return;
    guard->stop();
    guard->disconnect();
    guard->deleteLater();
  }));
}

}  // namespace

bool QtMainQueue::isCurrent() const { return QThread::currentThread() == context_.thread(); }

void QtMainQueue::async(std::function<void()> work) {
  QMetaObject::invokeMethod(&context_, std::move(work), Qt::QueuedConnection);
}

void QtMainQueue::after(double seconds, std::function<void()> work) {
  QTimer::singleShot(std::chrono::milliseconds(millisecondsUpTo(seconds)), Qt::PreciseTimer,
                     &context_, std::move(work));
}

Subscription QtMainQueue::every(double seconds, double tolerance, std::function<void()> work) {
  auto* timer = new RepeatingTimer(seconds, tolerance, &context_);
  timer->callOnTimeout(timer, [timer, work = std::move(work)] {
    // Before the work, which may end the subscription.
    timer->startNext();
    work();
  });
  timer->startNext();
  return owner(timer);
}

}  // namespace tollbeam
