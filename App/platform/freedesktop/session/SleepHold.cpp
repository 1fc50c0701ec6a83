#include "platform/freedesktop/session/SleepHold.h"

#include <chrono>
#include <utility>

namespace tollbeam {

namespace {

constexpr std::chrono::milliseconds holdAfterWake(3500);

}  // namespace

SleepHold::SleepHold(Workspace& workspace, std::function<void()> released) {
  untilRelease_.setSingleShot(true);
  // Never early: the look at three seconds would come second.
  untilRelease_.setTimerType(Qt::PreciseTimer);
  untilRelease_.setInterval(holdAfterWake);
  QObject::connect(&untilRelease_, &QTimer::timeout, &untilRelease_,
                   [this, released = std::move(released)] {
                     holding_ = false;
                     released();
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

}  // namespace tollbeam
