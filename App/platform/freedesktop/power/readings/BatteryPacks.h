// The machine's battery packs, decoded from the kernel's attributes, and what they amount to
// together. A laptop with two packs has one battery to its user: half of the packs is never told as
// the whole, so a sum exists only when every pack has its part.
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

/// The internal batteries that are there, in the order of their names.
[[nodiscard]] std::vector<BatteryPack> internalBatteries(const PowerSupplies& supplies);

/// Whether the battery tells what it does, a charge or an amount. A charge of 0 is none of these
/// while the state is unknown.
[[nodiscard]] bool tellsAnything(const SupplyAttributes& battery);

/// Whether the battery tells how much it holds, has held or can hold, as a pack of the machine
/// does.
[[nodiscard]] bool tellsAmounts(const SupplyAttributes& battery);

/// What the packs do together, as UPower has it.
[[nodiscard]] ChargeState combinedState(const std::vector<BatteryPack>& packs);

/// The charge of all packs, each with its share of the energy. Absent unless every pack tells.
[[nodiscard]] std::optional<double> combinedPercent(const std::vector<BatteryPack>& packs);

/// In the packs' common unit: charge where all report charge and not all report energy, energy
/// otherwise, converted where a pack reports charge only.
struct CombinedAmounts {
  bool isEnergy = true;
  Amounts amounts;
};
[[nodiscard]] CombinedAmounts combinedAmounts(const std::vector<BatteryPack>& packs);

/// The size of the pack's power in µW, never negative.
[[nodiscard]] std::optional<double> powerOf(const BatteryPack& pack);

/// The size of the pack's current in µA, never negative.
[[nodiscard]] std::optional<double> currentOf(const BatteryPack& pack);

}  // namespace tollbeam
