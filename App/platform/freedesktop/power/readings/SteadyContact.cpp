#include "platform/freedesktop/power/readings/SteadyContact.h"

#include <algorithm>

namespace tollbeam {

namespace {

using namespace std::chrono_literals;

constexpr auto settlingTime = 500ms;
constexpr auto steadyTime = 3s;
constexpr auto longestHold = 60s;

}  // namespace

SourceReading SteadyContact::steady(SourceReading reading, Time now) {
  if (!told_) {
    phase_ = Phase::calm;
    external_ = reading.onExternalPower;
  }
  follow(reading.onExternalPower, now);
  if (phase_ == Phase::holding && now - lastCounted_ >= longestHold) {
    lastCounted_ = now;
  } else if (phase_ == Phase::holding) {
    reading.onExternalPower = told_->onExternalPower;
    reading.state = told_->state;
    reading.minutesToFull = told_->minutesToFull;
    reading.minutesToEmpty = told_->minutesToEmpty;
  }
  told_ = reading;
  return reading;
}

void SteadyContact::follow(bool external, Time now) {
  if (phase_ != Phase::calm && now - lastChange_ >= steadyTime) phase_ = Phase::calm;
  if (external == external_) return;
  external_ = external;
  lastChange_ = now;
  if (phase_ == Phase::calm) {
    phase_ = Phase::settling;
    lastCounted_ = now;
  } else if (now - lastCounted_ >= settlingTime) {
    phase_ = Phase::holding;
  }
}

std::optional<SteadyContact::Time> SteadyContact::due() const {
  if (!told_ || phase_ != Phase::holding) return std::nullopt;
  return std::min(lastChange_ + steadyTime, lastCounted_ + longestHold);
}

}  // namespace tollbeam
