#include "platform/freedesktop/power/readings/SupplyReading.h"

#include "platform/freedesktop/power/readings/BatteryPacks.h"

namespace tollbeam {

namespace {

// How fast the packs in this state fill or empty, in the unit of the amounts per hour; absent when
// one of them does not report it.
std::optional<double> rate(const std::vector<BatteryPack>& packs, ChargeState state,
                           bool isEnergy) {
  double total = 0;
  for (const auto& pack : packs) {
    if (pack.state != state) continue;
    const auto part = isEnergy ? powerOf(pack) : currentOf(pack);
    if (!part) return std::nullopt;
    total += *part;
  }
  return total;
}

std::optional<std::int64_t> minutes(double amount, std::optional<double> perHour,
                                    std::int64_t longest) {
  if (!perHour || *perHour <= 0) return std::nullopt;
  const double estimate = amount / *perHour * 60;
  if (estimate < 0 || estimate > static_cast<double>(longest)) return std::nullopt;
  return static_cast<std::int64_t>(estimate);
}

}  // namespace

bool isOnExternalPower(const PowerSupplies& supplies, ChargeState state) {
  if (state == ChargeState::charging) return true;
  const bool rests = state == ChargeState::full || state == ChargeState::notCharging;
  return externalPowerConnected(supplies).value_or(rests);
}

std::optional<SourceReading> readSupplies(const PowerSupplies& supplies) {
  const auto packs = internalBatteries(supplies);
  if (packs.empty()) return std::nullopt;

  SourceReading reading;
  if (packs.size() == 1) reading.name = packs.front().model;
  const auto percent = combinedPercent(packs);
  if (!percent) return reading;  // A glitch.
  reading.percent = *percent;
  reading.state = combinedState(packs);
  const bool discharging = reading.state == ChargeState::discharging;
  reading.onExternalPower = isOnExternalPower(supplies, reading.state);

  const auto [isEnergy, amounts] = combinedAmounts(packs);
  const auto perHour = rate(packs, reading.state, isEnergy);
  if (discharging && amounts.now) {
    reading.minutesToEmpty = minutes(*amounts.now, perHour, kLongestMinutesToEmpty);
  }
  if (reading.state == ChargeState::charging && amounts.now && amounts.full) {
    reading.minutesToFull = minutes(*amounts.full - *amounts.now, perHour, kLongestMinutesToFull);
  }
  return reading;
}

}  // namespace tollbeam
