#include "platform/freedesktop/session/SleepHold.h"

#include <chrono>
#include <utility>

namespace tollbeam {

using namespace std::chrono_literals;

SleepHold::SleepHold(Workspace& workspace) {
  untilRelease_.setSingleShot(true);
  // A coarse timer may fire early, and so before the refresh.
  untilRelease_.setTimerType(Qt::PreciseTimer);
  untilRelease_.setInterval(3500ms);
  untilRelease_.callOnTimeout(&untilRelease_, [this] {
    holding_ = false;
    released_.notify();
  });
  willSleep_ = workspace.onWillSleep([this] {
    holding_ = true;
    untilRelease_.stop();
  });
  didWake_ = workspace.onDidWake([this] {
    holding_ = true;
    untilRelease_.start();
  });
}

Subscription SleepHold::onRelease(std::function<void()> callback) {
  return released_.add(std::move(callback));
}

}  // namespace tollbeam
