#pragma once

#include "platform/Port.h"
#include "values/Date.h"

namespace tollbeam {

/// The time. Rules take it as an argument; only the model, the views and the shell ask for it.
class Clock : public Port {
 public:
  /// The wall clock. It jumps when the user or the network sets it.
  [[nodiscard]] virtual Date now() const = 0;

  /// Seconds on a clock that nobody sets and that counts the time asleep too. It starts at an
  /// arbitrary instant, another in each run, so only differences have a meaning.
  [[nodiscard]] virtual double uptime() const = 0;
};

}  // namespace tollbeam
