#include "platform/freedesktop/power/readings/BatteryPacks.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace tollbeam {

namespace {

using Packs = std::vector<BatteryPack>;
using Part = std::optional<double> Amounts::*;

ChargeState chargeState(std::string_view status) {
  if (status == "Charging") return ChargeState::charging;
  if (status == "Discharging") return ChargeState::discharging;
  if (status == "Full") return ChargeState::full;
  if (status == "Not charging") return ChargeState::notCharging;
  return ChargeState::unknown;
}

// Firmware has given garbage bytes here; what is shown must be text.
std::string printable(std::string_view text) {
  const bool clean = std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
  return clean && text != "-" ? std::string(text) : std::string();
}

Amounts amountsOf(const SupplyAttributes& supply, const std::string& kind) {
  Amounts amounts;
  amounts.now = numberOf(supply, kind + "_now", 0, supplyLimits::capacity);
  amounts.full = numberOf(supply, kind + "_full", 1, supplyLimits::capacity);
  amounts.design = numberOf(supply, kind + "_full_design", 1, supplyLimits::capacity);
  return amounts;
}

BatteryPack decode(const SupplyAttributes& supply) {
  using namespace supplyLimits;
  BatteryPack pack;
  pack.model = printable(textOf(supply, "model_name"));
  pack.state = chargeState(textOf(supply, "status"));
  pack.percent = numberOf(supply, "capacity", 0, 100);
  pack.energy = amountsOf(supply, "energy");
  pack.charge = amountsOf(supply, "charge");
  pack.microvolts = numberOf(supply, "voltage_now", 1, microvolts);
  pack.designMicrovolts = numberOf(supply, "voltage_min_design", 1, microvolts);
  pack.microamperes = numberOf(supply, "current_now", -microamperes, microamperes);
  pack.microwatts = numberOf(supply, "power_now", -microwatts, microwatts);
  // 0 means that the firmware does not count, 65535 that it does not know.
  pack.cycles = numberOf(supply, "cycle_count", 1, 65534);
  pack.temperature = numberOf(supply, "temp", -1000, 1500);
  return pack;
}

std::optional<double> percentOf(const Amounts& amounts) {
  if (!amounts.now || !amounts.full) return std::nullopt;
  return std::min(100.0, *amounts.now / *amounts.full * 100);
}

std::optional<double> percentOf(const BatteryPack& pack) {
  if (pack.percent) return pack.percent;
  const auto percent = percentOf(pack.energy);
  return percent ? percent : percentOf(pack.charge);
}

Amounts asEnergy(const BatteryPack& pack) {
  const auto voltage = pack.designMicrovolts ? pack.designMicrovolts : pack.microvolts;
  if (pack.energy.known() || !voltage) return pack.energy;
  Amounts energy;
  for (const Part part : {&Amounts::now, &Amounts::full, &Amounts::design}) {
    if (pack.charge.*part) energy.*part = *(pack.charge.*part) * *voltage / 1e6;
  }
  return energy;
}

template <typename AmountsOfPack>
Amounts sum(const Packs& packs, AmountsOfPack amountsOfPack) {
  Amounts total{0.0, 0.0, 0.0};
  for (const auto& pack : packs) {
    const Amounts amounts = std::invoke(amountsOfPack, pack);
    for (const Part part : {&Amounts::now, &Amounts::full, &Amounts::design}) {
      if (!(amounts.*part)) (total.*part).reset();
      if (total.*part) *(total.*part) += *(amounts.*part);
    }
  }
  return total;
}

std::optional<double> meanPercent(const Packs& packs) {
  double total = 0;
  for (const auto& pack : packs) {
    const auto percent = percentOf(pack);
    if (!percent) return std::nullopt;
    total += *percent;
  }
  return total / static_cast<double>(packs.size());
}

}  // namespace

std::vector<BatteryPack> internalBatteries(const PowerSupplies& supplies) {
  Packs packs;
  for (const auto& [name, supply] : supplies) {
    if (isInternalBattery(supply)) packs.push_back(decode(supply));
  }
  return packs;
}

bool reportsAnything(const SupplyAttributes& battery) {
  const auto pack = decode(battery);
  return pack.state != ChargeState::unknown || pack.percent.value_or(0) > 0 ||
         reportsAmounts(battery);
}

bool reportsAmounts(const SupplyAttributes& battery) {
  const auto pack = decode(battery);
  const auto reports = [](const Amounts& amounts) {
    return amounts.now.value_or(0) > 0 || amounts.full || amounts.design;
  };
  return reports(pack.energy) || reports(pack.charge);
}

ChargeState combinedState(const Packs& packs) {
  for (const auto state : {ChargeState::discharging, ChargeState::charging,
                           ChargeState::notCharging, ChargeState::unknown}) {
    if (std::ranges::find(packs, state, &BatteryPack::state) != packs.end()) return state;
  }
  return packs.empty() ? ChargeState::unknown : ChargeState::full;
}

std::optional<double> combinedPercent(const Packs& packs) {
  if (packs.empty()) return std::nullopt;
  if (packs.size() == 1) return percentOf(packs.front());
  for (const auto& total : {sum(packs, asEnergy), sum(packs, &BatteryPack::charge)}) {
    if (const auto percent = percentOf(total)) return percent;
  }
  return meanPercent(packs);
}

CombinedAmounts combinedAmounts(const Packs& packs) {
  const auto allKnow = [&packs](Amounts BatteryPack::*amounts) {
    return std::ranges::all_of(packs, &Amounts::known, amounts);
  };
  if (allKnow(&BatteryPack::charge) && !allKnow(&BatteryPack::energy)) {
    return {false, sum(packs, &BatteryPack::charge)};
  }
  return {true, sum(packs, asEnergy)};
}

std::optional<double> powerOf(const BatteryPack& pack) {
  // A driver that has both may leave the power at 0.
  if (pack.microwatts && *pack.microwatts != 0) return std::abs(*pack.microwatts);
  if (pack.microamperes && pack.microvolts) {
    return std::abs(*pack.microamperes) * *pack.microvolts / 1e6;
  }
  return pack.microwatts;
}

std::optional<double> currentOf(const BatteryPack& pack) {
  if (pack.microamperes) return std::abs(*pack.microamperes);
  if (pack.microwatts && pack.microvolts) {
    return std::abs(*pack.microwatts) / *pack.microvolts * 1e6;
  }
  return std::nullopt;
}

}  // namespace tollbeam
