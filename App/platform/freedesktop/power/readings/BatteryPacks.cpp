#include "platform/freedesktop/power/readings/BatteryPacks.h"

#include <algorithm>
#include <cmath>

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
  const bool clean =
      std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
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

std::optional<double> percentOf(const BatteryPack& pack) {
  if (pack.percent) return pack.percent;
  for (const auto& amounts : {pack.energy, pack.charge}) {
    if (amounts.now && amounts.full) return std::min(100.0, *amounts.now / *amounts.full * 100);
  }
  return std::nullopt;
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
    const Amounts amounts = amountsOfPack(pack);
    for (const Part part : {&Amounts::now, &Amounts::full, &Amounts::design}) {
      if (!(amounts.*part)) (total.*part).reset();
      if (total.*part) *(total.*part) += *(amounts.*part);
    }
  }
  return total;
}

bool all(const Packs& packs, bool (*holds)(const BatteryPack&)) {
  return std::all_of(packs.begin(), packs.end(), holds);
}

bool any(const Packs& packs, ChargeState state) {
  return std::any_of(packs.begin(), packs.end(),
                     [state](const BatteryPack& pack) { return pack.state == state; });
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

bool tellsAnything(const SupplyAttributes& battery) {
  const auto pack = decode(battery);
  return pack.state != ChargeState::unknown || pack.percent.value_or(0) > 0 ||
         tellsAmounts(battery);
}

bool tellsAmounts(const SupplyAttributes& battery) {
  const auto pack = decode(battery);
  const auto tells = [](const Amounts& amounts) {
    return amounts.now.value_or(0) > 0 || amounts.full || amounts.design;
  };
  return tells(pack.energy) || tells(pack.charge);
}

ChargeState combinedState(const Packs& packs) {
  if (any(packs, ChargeState::discharging)) return ChargeState::discharging;
  if (any(packs, ChargeState::charging)) return ChargeState::charging;
  if (any(packs, ChargeState::notCharging)) return ChargeState::notCharging;
  if (any(packs, ChargeState::unknown)) return ChargeState::unknown;
  return packs.empty() ? ChargeState::unknown : ChargeState::full;
}

std::optional<double> combinedPercent(const Packs& packs) {
  if (packs.size() == 1) return percentOf(packs.front());
  const auto energy = sum(packs, asEnergy);
  const auto charge = sum(packs, [](const BatteryPack& pack) { return pack.charge; });
  for (const auto& total : {energy, charge}) {
    if (total.now && total.full && *total.full > 0) {
      return std::min(100.0, *total.now / *total.full * 100);
    }
  }
  return packs.empty() ? std::nullopt : meanPercent(packs);
}

CombinedAmounts combinedAmounts(const Packs& packs) {
  const bool allEnergy = all(packs, [](const BatteryPack& pack) { return pack.energy.known(); });
  const bool allCharge = all(packs, [](const BatteryPack& pack) { return pack.charge.known(); });
  if (allCharge && !allEnergy) {
    return {false, sum(packs, [](const BatteryPack& pack) { return pack.charge; })};
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
