#include "battery/BatteryReader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tollbeam {

namespace {

// Null, which is of no other kind, when the key is missing.
const Value& at(const Dictionary& d, std::string_view key) {
  static const Value kMissing{Null()};
  const Value* value = find(d, key);
  return value ? *value : kMissing;
}

bool textIs(const Dictionary& d, std::string_view key, std::string_view expected) {
  const auto* text = at(d, key).text();
  return text && *text == expected;
}

std::optional<std::int64_t> integerAtLeast(std::int64_t least, const Dictionary& d,
                                           std::string_view key) {
  const auto number = at(d, key).integer();
  return number && *number >= least ? number : std::nullopt;
}

// The charge in whole percent; absent unless the description is that of a readable internal
// battery.
std::optional<std::int64_t> internalBatteryPercent(const Dictionary& source) {
  if (!textIs(source, "Type", "InternalBattery")) return std::nullopt;
  if (!at(source, "Is Present").flag().value_or(true)) return std::nullopt;
  const auto current = at(source, "Current Capacity").number();
  const auto max = at(source, "Max Capacity").number();
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
    const auto capacity = at(properties, key).integer();
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
    state.isCharging = at(*source, "Is Charging").flag().value_or(false);
    state.isCharged = at(*source, "Is Charged").flag().value_or(false);
    state.pluggedIn = textIs(*source, "Power Source State", "AC Power");
    if (const auto* name = at(*source, "Name").text()) state.sourceName = *name;
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
  if (const auto hundredths = at(properties, "Temperature").integer()) {
    const double celsius = static_cast<double>(*hundredths) / 100.0;
    if (celsius > -20.0 && celsius < 100.0) state.temperatureC = celsius;
  }
  state.voltage = thousandth(integerAtLeast(1, properties, "Voltage"));
  auto milliamperes = at(properties, "Amperage").integer();
  if (!milliamperes) milliamperes = at(properties, "InstantAmperage").integer();
  state.amperage = thousandth(milliamperes);
  if (const auto* adapter = at(properties, "AdapterDetails").dictionary()) {
    state.adapterWatts = integerAtLeast(1, *adapter, "Watts");
  }
}

}  // namespace tollbeam
