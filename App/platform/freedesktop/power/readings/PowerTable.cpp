#include "platform/freedesktop/power/readings/PowerTable.h"

#include <cmath>

namespace tollbeam {

bool isGlitch(const SourceReading& reading) {
  return reading.state == ChargeState::unknown && reading.percent == 0;
}

List powerTable(const std::optional<SourceReading>& reading) {
  if (!reading) return {};
  Dictionary source{
      {"Type", reading->type},
      {"Is Present", true},
      {"Current Capacity", reading->percent},
      {"Max Capacity", 100},
      {"Is Charging", reading->state == ChargeState::charging},
      {"Is Charged", reading->state == ChargeState::full},
      {"Power Source State", reading->onExternalPower ? "AC Power" : "Battery Power"},
      {"Time to Full Charge", reading->minutesToFull.value_or(-1)},
      {"Time to Empty", reading->minutesToEmpty.value_or(-1)},
  };
  if (!reading->name.empty()) source.emplace("Name", reading->name);
  return {std::move(source)};
}

bool hasInternalBattery(const List& table) {
  if (table.empty()) return false;
  const auto* source = table.front().dictionary();
  const auto* type = source ? find(*source, "Type") : nullptr;
  return type && *type == Value("InternalBattery");
}

List inWholePercent(List table) {
  for (auto& entry : table) {
    const auto* source = entry.dictionary();
    const auto* value = source ? find(*source, "Current Capacity") : nullptr;
    const auto percent = value ? value->number() : std::nullopt;
    if (!percent) continue;
    Dictionary rounded = *source;
    rounded.insert_or_assign("Current Capacity", std::round(*percent));
    entry = std::move(rounded);
  }
  return table;
}

}  // namespace tollbeam
