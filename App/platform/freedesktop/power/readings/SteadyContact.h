// Filters a charger's worn contact, which would otherwise cause ten refreshes, samples and perhaps
// alerts a second. The first change counts at once, and so do those within the half second in which
// it settles; later ones count when external power has not changed for three seconds. A contact
// that never rests counts as it is once a minute: the history has a sample a minute anyway, and the
// state of an hour ago would be wrong. State and estimates are held back together with external
// power, the charge never.
#pragma once

#include <chrono>
#include <optional>

#include "platform/freedesktop/power/readings/PowerTable.h"

namespace tollbeam {

class SteadyContact {
 public:
  /// Since any fixed moment; never goes back.
  using Time = std::chrono::milliseconds;

  /// The reading with external power as it counts at `now`. To be called with each reading in turn.
  [[nodiscard]] SourceReading steady(SourceReading reading, Time now);

  /// When a reading that is held back counts if external power does not change before; absent when
  /// none is held back.
  [[nodiscard]] std::optional<Time> due() const;

  /// The next reading counts as it is, whatever came before.
  void forget() { last_.reset(); }

 private:
  enum class Phase { calm, settling, holding };

  void follow(bool external, Time now);

  std::optional<SourceReading> last_;
  Phase phase_ = Phase::calm;
  /// As last read, held back or not.
  bool external_ = false;
  /// The first change of the flapping; once that has lasted a minute, when a reading last counted.
  Time lastCounted_{};
  Time lastChange_{};
};

}  // namespace tollbeam
