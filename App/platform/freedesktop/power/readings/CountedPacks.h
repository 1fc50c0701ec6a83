// Which of the kernel's batteries count as the machine's. Two kinds are listed beside real packs
// and must not count: an empty bay whose controller reports nothing, and the battery of a mouse
// whose driver does not mark it as a device's, which reports a charge but no amount. A pack whose
// controller is busy for a moment, after a wake for example, reports as little and must count, or
// the other pack would pass for the whole battery. So a pack counts by all that it has reported
// since it was put in, and one that cannot be read at all counts, too.
#pragma once

#include <set>
#include <string>

#include "platform/freedesktop/power/readings/PowerSupplies.h"

namespace tollbeam {

class CountedPacks {
 public:
  /// The supplies without the batteries that do not count. To be called with each reading in turn.
  [[nodiscard]] PowerSupplies of(PowerSupplies supplies);

 private:
  using Names = std::set<std::string>;

  /// The batteries that have reported something, or an amount, since they were put in.
  Names reporting_;
  Names measured_;
};

}  // namespace tollbeam
