// Keeps a charger with a loose contact from being news at every touch. A change between external
// power and battery is believed at once after a calm time; one that follows another too soon is
// believed only when it has stood still. Until then the table as a whole stays the believed one:
// half of it would be a state that never was. Time is passed in and must not go back.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "platform/Value.h"

namespace tollbeam {

struct SteadyPatience {
  /// Without a change for so long, the next one is believed at once.
  std::chrono::milliseconds calm{5000};
  /// How long a change that came sooner must stand still.
  std::chrono::milliseconds still{3000};
  /// A change that was believed at once and is taken back sooner than this was none: it is over
  /// before anybody was told.
  std::chrono::milliseconds burst{500};
};

class SteadyPowerSource {
 public:
  using Instant = std::chrono::steady_clock::time_point;

  explicit SteadyPowerSource(SteadyPatience patience) : patience_(patience) {}

  /// The table to believe, `newest` or an earlier one. Whatever has no internal battery is believed
  /// at once, and so is the first table of a battery.
  [[nodiscard]] std::optional<List> update(std::optional<List> newest, Instant now);

  /// When the newest table, if it stays, is to be believed; absent when nothing is held back.
  [[nodiscard]] std::optional<Instant> heldUntil() const { return heldUntil_; }

 private:
  [[nodiscard]] bool holdsBack(const std::string& source, Instant now);
  void believe(const std::string& source, Instant now);

  SteadyPatience patience_;
  std::optional<List> believed_;
  /// "Power Source State" in the believed and in the newest table; empty without a battery.
  std::string believedSource_;
  std::string seenSource_;
  /// When the source last changed, believed or not.
  std::optional<Instant> lastChange_;
  std::optional<Instant> takeBackUntil_;
  std::optional<Instant> heldUntil_;
};

}  // namespace tollbeam
