#include "battery/BatteryReader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tollbeam {

namespace {

bool textIs(const Dictionary& d, std::string_view key, std::string_view expected) {
  const Value* value = find(d, key);
  const auto* text = value ? value->text() : nullptr;
  return text && *text == expected;
}

std::optional<bool> flagAt(const Dictionary& d, std::string_view key) {
  const Value* value = find(d, key);
  return value ? value->flag() : std::nullopt;
}

std::optional<double> numberAt(const Dictionary& d, std::string_view key) {
  const Value* value = find(d, key);
  return value ? value->number() : std::nullopt;
}

std::optional<std::int64_t> integerAt(const Dictionary& d, std::string_view key) {
  const Value* value = find(d, key);
  return value ? value->integer() : std::nullopt;
}

std::optional<std::int64_t> integerAtLeast(std::int64_t least, const Dictionary& d,
                                           std::string_view key) {
  const auto number = integerAt(d, key);
  return number && *number >= least ? number : std::nullopt;
}

// The charge in whole percent; absent unless the description is that of a readable internal
// battery.
std::optional<std::int64_t> internalBatteryPercent(const Dictionary& source) {
  if (!textIs(source, "Type", "InternalBattery")) return std::nullopt;
  if (!flagAt(source, "Is Present").value_or(true)) return std::nullopt;
  const auto current = numberAt(source, "Current Capacity");
  const auto max = numberAt(source, "Max Capacity");
  if (!current || !max || !(*max > 0)) return std::nullopt;
  const double percent = *current / *max * 100;
  if (std::isnan(percent)) return std::nullopt;
  return static_cast<std::int64_t>(std::clamp(std::round(percent), 0.0, 100.0));
}

// A value far from the design capacity is no capacity at all: controllers report percent or
// garbage under the same keys.
std::optional<std::int64_t> plausibleFullCapacity(const Dictionary& properties,
                                                  std::int64_t designCapacity) {
  const auto design = static_cast<double>(designCapacity);
  for (const auto* key : {"AppleRawMaxCapacity", "NominalChargeCapacity", "MaxCapacity"}) {
    const auto capacity = integerAt(properties, key);
    if (!capacity) continue;
    const auto value = static_cast<double>(*capacity);
    if (value >= 0.3 * design && value <= 1.3 * design) return capacity;
  }
  return std::nullopt;
}

std::optional<double> thousandth(std::optional<std::int64_t> number) {
  if (!number) return std::nullopt;
  return static_cast<double>(*number) / 1000.0;
}

}  // namespace

BatteryReader::BatteryReader(PowerSources& powerSources, const ProcessInfo& processInfo)
    : powerSources_(powerSources), processInfo_(processInfo) {}

BatteryState BatteryReader::read() const {
  BatteryState state;
  if (const auto descriptions = powerSources_.descriptions()) {
    readPowerSources(*descriptions, state);
  }
  state.lowPowerMode = processInfo_.isLowPowerModeEnabled();
  if (state.hasBattery) {
    if (const auto properties = powerSources_.smartBattery()) readSmartBattery(*properties, state);
  }
  return state;
}

void BatteryReader::startObserving(std::function<void()> changed) {
  if (source_) return;
  source_ = powerSources_.observe(std::move(changed));
}

void readPowerSources(const List& descriptions, BatteryState& state) {
  for (const Value& description : descriptions) {
    const Dictionary* source = description.dictionary();
    if (!source) continue;
    const auto percent = internalBatteryPercent(*source);
    if (!percent) continue;
    state.hasBattery = true;
    state.percent = *percent;
    state.isCharging = flagAt(*source, "Is Charging").value_or(false);
    state.isCharged = flagAt(*source, "Is Charged").value_or(false);
    state.pluggedIn = textIs(*source, "Power Source State", "AC Power");
    if (const Value* name = find(*source, "Name"); name && name->text()) {
      state.sourceName = *name->text();
    }
    state.minutesToFull = integerAtLeast(0, *source, "Time to Full Charge");
    state.minutesToEmpty = integerAtLeast(0, *source, "Time to Empty");
    return;
  }
}

void readSmartBattery(const Dictionary& properties, BatteryState& state) {
  state.cycleCount = integerAtLeast(0, properties, "CycleCount");
  state.designCapacity = integerAtLeast(1, properties, "DesignCapacity");
  if (state.designCapacity) {
    state.fullCapacity = plausibleFullCapacity(properties, *state.designCapacity);
  }
  if (const auto hundredths = integerAt(properties, "Temperature")) {
    const double celsius = static_cast<double>(*hundredths) / 100.0;
    if (celsius > -20.0 && celsius < 100.0) state.temperatureC = celsius;
  }
  state.voltage = thousandth(integerAtLeast(1, properties, "Voltage"));
  auto milliamperes = integerAt(properties, "Amperage");
  if (!milliamperes) milliamperes = integerAt(properties, "InstantAmperage");
  state.amperage = thousandth(milliamperes);
  if (const Value* adapter = find(properties, "AdapterDetails"); adapter && adapter->dictionary()) {
    state.adapterWatts = integerAtLeast(1, *adapter->dictionary(), "Watts");
  }
}

}  // namespace tollbeam
