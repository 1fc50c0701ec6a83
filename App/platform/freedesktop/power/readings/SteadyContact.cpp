#include "platform/freedesktop/power/readings/SteadyContact.h"

#include <algorithm>

namespace tollbeam {

namespace {

using namespace std::chrono_literals;

constexpr auto kSettlingTime = 500ms;
constexpr auto kSteadyTime = 3s;
constexpr auto kLongestHold = 60s;

}  // namespace

SourceReading SteadyContact::steady(SourceReading reading, Time now) {
  if (!last_) {
    phase_ = Phase::calm;
    external_ = reading.onExternalPower;
  }
  follow(reading.onExternalPower, now);
  if (phase_ == Phase::holding && now - lastCounted_ >= kLongestHold) {
    lastCounted_ = now;
  } else if (phase_ == Phase::holding) {
    reading.onExternalPower = last_->onExternalPower;
    reading.state = last_->state;
    reading.minutesToFull = last_->minutesToFull;
    reading.minutesToEmpty = last_->minutesToEmpty;
  }
  last_ = reading;
  return reading;
}

void SteadyContact::follow(bool external, Time now) {
  if (phase_ != Phase::calm && now - lastChange_ >= kSteadyTime) phase_ = Phase::calm;
  if (external == external_) return;
  external_ = external;
  lastChange_ = now;
  if (phase_ == Phase::calm) {
    phase_ = Phase::settling;
    lastCounted_ = now;
  } else if (now - lastCounted_ >= kSettlingTime) {
    phase_ = Phase::holding;
  }
}

std::optional<SteadyContact::Time> SteadyContact::due() const {
  if (!last_ || phase_ != Phase::holding) return std::nullopt;
  return std::min(lastChange_ + kSteadyTime, lastCounted_ + kLongestHold);
}

}  // namespace tollbeam
