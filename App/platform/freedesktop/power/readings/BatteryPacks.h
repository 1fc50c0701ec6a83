// The machine's battery packs, decoded from the kernel's attributes, and their combination. A
// laptop with two packs has one battery to its user: one pack must never pass for the whole
// battery, so a sum exists only when every pack reports its part.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/freedesktop/power/readings/PowerSupplies.h"
#include "platform/freedesktop/power/readings/PowerTable.h"

namespace tollbeam {

/// Amounts of energy (µWh) or of charge (µAh).
struct Amounts {
  std::optional<double> now;
  std::optional<double> full;
  std::optional<double> design;

  [[nodiscard]] bool known() const { return now || full; }
};

struct BatteryPack {
  std::string model;
  ChargeState state = ChargeState::unknown;
  /// As the firmware gives it, 0 to 100.
  std::optional<double> percent;
  Amounts energy;
  Amounts charge;
  std::optional<double> microvolts;
  std::optional<double> designMicrovolts;
  /// With the driver's sign, which means nothing: some count discharging as positive.
  std::optional<double> microamperes;
  std::optional<double> microwatts;
  std::optional<double> cycles;
  /// Tenths of a degree Celsius.
  std::optional<double> temperature;
};

/// The internal batteries that are present, in the order of their names.
[[nodiscard]] std::vector<BatteryPack> internalBatteries(const PowerSupplies& supplies);

/// Whether the battery reports a state, a charge or an amount. A charge of 0 with an unknown state
/// does not count.
[[nodiscard]] bool reportsAnything(const SupplyAttributes& battery);

/// Whether the battery reports how much it holds or can hold, as a pack of the machine does.
[[nodiscard]] bool reportsAmounts(const SupplyAttributes& battery);

/// The packs' common state, combined as UPower does it.
[[nodiscard]] ChargeState combinedState(const std::vector<BatteryPack>& packs);

/// The charge of all packs, weighted by their energy. Absent unless every pack reports its part.
[[nodiscard]] std::optional<double> combinedPercent(const std::vector<BatteryPack>& packs);

/// In the packs' common unit: charge where all report charge and not all report energy, energy
/// otherwise, converted where a pack reports charge only.
struct CombinedAmounts {
  bool isEnergy = true;
  Amounts amounts;
};
[[nodiscard]] CombinedAmounts combinedAmounts(const std::vector<BatteryPack>& packs);

/// The pack's power in µW, never negative.
[[nodiscard]] std::optional<double> powerOf(const BatteryPack& pack);

/// The pack's current in µA, never negative.
[[nodiscard]] std::optional<double> currentOf(const BatteryPack& pack);

}  // namespace tollbeam
