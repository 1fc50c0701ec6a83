#include "battery/BatteryState.h"

#include <cstdio>

#include "battery/FormatMinutes.h"

namespace tollbeam {

namespace {

// Idle on external power at 100 % counts as full, though the source does not say so.
bool isFull(const BatteryState& s) {
  return s.isCharged || (s.pluggedIn && !s.isCharging && s.percent >= 100);
}

}  // namespace

std::vector<std::string> BatteryState::symbolNames() const {
  if (!hasBattery) return {"battery.0"};
  if (isFull(*this)) return {"battery.100percent", "battery.100"};
  if (isCharging) return {"battery.100.bolt", "bolt.fill"};
  if (pluggedIn) return {"powerplug.fill", "powerplug"};
  // Half-way between the quarters, so that the drawing is never off by more than an eighth.
  if (percent >= 88) return {"battery.100"};
  if (percent >= 63) return {"battery.75"};
  if (percent >= 38) return {"battery.50"};
  if (percent >= 13) return {"battery.25"};
  return {"battery.0"};
}

std::optional<std::string> BatteryState::shortTime() const {
  if (!hasBattery || isCharged || (pluggedIn && !isCharging)) return std::nullopt;
  const auto minutes = isCharging ? minutesToFull : minutesToEmpty;
  if (!minutes) return std::nullopt;
  char text[32];
  std::snprintf(text, sizeof text, "%lld:%02lld", static_cast<long long>(*minutes / 60),
                static_cast<long long>(*minutes % 60));
  return text;
}

Message BatteryState::stateText() const {
  const auto withTime = [](const std::string& before, std::int64_t minutes,
                           const std::string& after) {
    const Message time = formatMinutes(minutes);
    return Message(before + time.pattern + after, time.arguments);
  };
  if (!hasBattery) return "No battery found";
  if (isFull(*this)) return "Fully charged";
  if (isCharging) {
    if (!minutesToFull) return "Charging, estimating time to full…";
    return withTime("Charging, ", *minutesToFull, " to full");
  }
  if (pluggedIn) return "Plugged in, not charging";
  if (!minutesToEmpty) return "On battery, estimating time left…";
  return withTime("On battery, ", *minutesToEmpty, " left");
}

std::optional<double> BatteryState::healthPercent() const {
  if (!designCapacity || !fullCapacity || *designCapacity < 1) return std::nullopt;
  return static_cast<double>(*fullCapacity) / static_cast<double>(*designCapacity) * 100;
}

std::optional<std::string> BatteryState::healthLabel() const {
  const auto ratio = healthPercent();
  if (!ratio) return std::nullopt;
  if (*ratio > 90) return "Good";
  return *ratio >= 80 ? "Fair" : "Worn";
}

}  // namespace tollbeam
