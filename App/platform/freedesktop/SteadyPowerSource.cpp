#include "platform/freedesktop/SteadyPowerSource.h"

#include <utility>

#include "platform/freedesktop/PowerTable.h"

namespace tollbeam {

namespace {

// Empty when there is no battery, or it does not tell.
std::string sourceIn(const std::optional<List>& table) {
  if (!table || !hasInternalBattery(*table)) return {};
  const auto* value = find(*table->front().dictionary(), "Power Source State");
  const auto* text = value ? value->text() : nullptr;
  return text ? *text : std::string();
}

}  // namespace

std::optional<List> SteadyPowerSource::update(std::optional<List> newest, Instant now) {
  const auto source = sourceIn(newest);
  if (source.empty() || believedSource_.empty()) {
    believedSource_ = seenSource_ = source;
    lastChange_ = takeBackUntil_ = heldUntil_ = std::nullopt;
  } else if (holdsBack(source, now)) {
    return believed_;
  }
  return believed_ = std::move(newest);
}

bool SteadyPowerSource::holdsBack(const std::string& source, Instant now) {
  const bool changed = source != seenSource_;
  const bool calm = !lastChange_ || now - *lastChange_ >= patience_.calm;
  if (changed) {
    seenSource_ = source;
    lastChange_ = now;
    heldUntil_ = now + patience_.still;
  }
  if (source == believedSource_) {
    heldUntil_.reset();
    return false;
  }
  if (changed && calm) {
    believe(source, now);
    takeBackUntil_ = now + patience_.burst;
    return false;
  }
  const bool takenBack = changed && takeBackUntil_ && now < *takeBackUntil_;
  if (!takenBack && now < *heldUntil_) return true;
  believe(source, now);
  return false;
}

void SteadyPowerSource::believe(const std::string& source, Instant now) {
  believedSource_ = source;
  lastChange_ = now;
  takeBackUntil_.reset();
  heldUntil_.reset();
}

}  // namespace tollbeam
