// A clock that stands still until a test lets time pass, and a main queue whose timers follow it.
// `advance` runs the timers that fall due, in order, each at exactly its time.
#pragma once

#include <deque>
#include <functional>
#include <list>
#include <memory>

#include "platform/Clock.h"
#include "platform/MainQueue.h"

namespace tollbeam {

class ManualClock final : public Clock {
 public:
  explicit ManualClock(Date now) : now_(now) {}

  [[nodiscard]] Date now() const override { return now_; }
  [[nodiscard]] double uptime() const override { return now_.secondsSince1970 - stepped_; }
  /// The seconds that timers count: `uptime` without the time asleep.
  [[nodiscard]] double awake() const { return uptime() - slept_; }

  /// Time passes until `now`.
  void set(Date now) { now_ = now; }
  /// Time passes until `awake` is this value.
  void setAwake(double awake) { now_ = Date{awake + slept_ + stepped_}; }
  /// The machine sleeps for `seconds`.
  void sleep(double seconds) {
    now_ = now_ + seconds;
    slept_ += seconds;
  }
  /// The wall clock is set by `seconds`; no time passes.
  void step(double seconds) {
    now_ = now_ + seconds;
    stepped_ += seconds;
  }

 private:
  Date now_;
  double stepped_ = 0;
  double slept_ = 0;
};

class ManualQueue final : public MainQueue {
 public:
  explicit ManualQueue(ManualClock& clock) : clock_(clock) {}

  [[nodiscard]] bool isCurrent() const override { return onMainThread; }
  void async(std::function<void()> work) override;
  void after(double seconds, std::function<void()> work) override;
  Subscription every(double seconds, double tolerance, std::function<void()> work) override;

  /// Runs the queued work, and what that queues, without letting time pass.
  void drain();

  /// Lets time pass until `instant`; the clock stands at `instant` afterwards.
  void advanceTo(Date instant);
  void advance(double seconds) { advanceTo(clock_.now() + seconds); }

  /// The answer of `isCurrent`; a test of the rule about threads turns it off.
  bool onMainThread = true;

 private:
  struct Timer {
    double due;       // in terms of the clock's `awake`
    double interval;  // 0: once
    std::weak_ptr<std::function<void()>> work;
    std::shared_ptr<std::function<void()>> kept;  // owns the work of a timer that fires once
  };

  ManualClock& clock_;
  std::deque<std::function<void()>> waiting_;
  std::list<Timer> timers_;
};

}  // namespace tollbeam
