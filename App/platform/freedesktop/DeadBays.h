// Bays whose battery answers with nothing at all, for as long as it is there: beside real packs
// they do not count. A pack whose controller is busy for a moment, after a wake for example, says
// as little and must count, or the other pack would be told as the whole battery; so what has ever
// told anything is no dead bay, nor is what cannot even be read.
#pragma once

#include <set>
#include <string>

#include "platform/freedesktop/PowerSupplies.h"

namespace tollbeam {

class DeadBays {
 public:
  /// The supplies without dead bays, unless there is nothing else. To be given each reading in
  /// turn.
  [[nodiscard]] PowerSupplies without(PowerSupplies supplies);

 private:
  /// The batteries that have told something since they were put in.
  std::set<std::string> alive_;
};

}  // namespace tollbeam
