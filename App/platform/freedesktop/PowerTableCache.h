// Decides whose word the power-source table is. UPower's, when it has one about an internal
// battery; the kernel's otherwise, so that a restart of the daemon never makes the battery vanish.
// A glitch is no reading: what was known before stands until somebody has a real one.
#pragma once

#include <functional>
#include <optional>

#include "platform/Value.h"
#include "platform/freedesktop/PowerSupplies.h"
#include "platform/freedesktop/UPowerReading.h"

namespace tollbeam {

class PowerTableCache {
 public:
  struct Table {
    /// Absent when neither UPower nor the kernel tells anything.
    std::optional<List> sources;
    /// The kernel's word: its changes are what to watch then.
    bool fromKernel = false;
    /// A battery is there, but nobody has told anything real of it yet: no news of its absence.
    bool isGlitch = false;
  };

  using Supplies = std::function<std::optional<PowerSupplies>()>;

  /// `upower` is absent while the daemon has not answered; `supplies` is asked only when needed.
  [[nodiscard]] Table update(const std::optional<UPowerAnswer>& upower, const Supplies& supplies);

 private:
  Table last_;
};

}  // namespace tollbeam
