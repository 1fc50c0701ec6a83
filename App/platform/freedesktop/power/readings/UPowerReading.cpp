#include "platform/freedesktop/power/readings/UPowerReading.h"

#include <cmath>
#include <cstdint>
#include <string_view>

namespace tollbeam {

namespace {

// The daemon's own numbers, part of its public interface.
constexpr std::int64_t unknownKind = 0;
constexpr std::int64_t batteryKind = 2;
constexpr std::int64_t upsKind = 3;

std::optional<std::int64_t> integerAt(const Dictionary& d, std::string_view key) {
  const Value* value = find(d, key);
  return value ? value->integer() : std::nullopt;
}

std::string typeText(std::int64_t kind) {
  if (kind == batteryKind) return "InternalBattery";
  return kind == upsKind ? "UPS" : "Unknown";
}

ChargeState chargeState(std::int64_t state) {
  switch (state) {
    case 1:
      return ChargeState::charging;
    case 2:
      return ChargeState::discharging;
    case 4:
      return ChargeState::full;
    case 5:  // Waiting to charge: a limit holds.
    case 6:  // Waiting to discharge: another pack goes first.
      return ChargeState::notCharging;
    default:
      // 3 is "empty", which UPower guesses from "unknown, 0 %": a battery that runs down stays
      // discharging to the end.
      return ChargeState::unknown;
  }
}

// UPower reports 0 seconds while it has no estimate.
std::optional<std::int64_t> minutes(std::optional<std::int64_t> seconds, std::int64_t longest) {
  if (!seconds || *seconds <= 0 || *seconds / 60 > longest) return std::nullopt;
  return *seconds / 60;
}

}  // namespace

std::optional<SourceReading> readUPower(const UPowerAnswer& answer) {
  const auto& device = answer.device;
  const auto kind = integerAt(device, "Type").value_or(unknownKind);
  const Value* present = find(device, "IsPresent");
  if (kind == unknownKind || (present && !present->flag().value_or(true))) return std::nullopt;

  SourceReading reading;
  reading.type = typeText(kind);
  if (const Value* model = find(device, "Model"); model && model->text()) {
    reading.name = *model->text();
  }
  const Value* percentage = find(device, "Percentage");
  const auto percent = percentage ? percentage->number() : std::nullopt;
  // A device without a readable charge stays at "unknown, 0 %": a glitch, not an empty battery.
  if (percent && std::isfinite(*percent) && *percent >= 0) {
    reading.percent = *percent;
    reading.state = chargeState(integerAt(device, "State").value_or(0));
  }
  reading.onExternalPower = !answer.onBattery;
  reading.minutesToFull = minutes(integerAt(device, "TimeToFull"), kLongestMinutesToFull);
  reading.minutesToEmpty = minutes(integerAt(device, "TimeToEmpty"), kLongestMinutesToEmpty);
  return reading;
}

}  // namespace tollbeam
