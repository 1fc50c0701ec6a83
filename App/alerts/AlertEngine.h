// Decides which reminders are due. It remembers what it has sent, so that a condition alerts once
// an episode (the charge limit up to four times), and re-arms a kind only when its condition no
// longer holds: a charge that stays around a threshold must not alert at every reading.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "battery/BatteryState.h"
#include "platform/UserDefaults.h"
#include "preferences/Prefs.h"
#include "values/AlertKind.h"
#include "values/Date.h"
#include "values/Message.h"

namespace tollbeam {

/// An alert that is due but not yet posted.
struct PendingAlert {
  AlertKind kind = AlertKind::chargeLimit;
  Message title;
  Message body;

  friend bool operator==(const PendingAlert&, const PendingAlert&) = default;
};

struct AlertEngine {
  /// Kinds whose condition already held at priming: silent until it has ended once.
  std::set<AlertKind> suppressed;
  /// Charge-limit reminders sent in this episode.
  std::int64_t chargeSent = 0;
  Date chargeLast = Date::distantPast();
  bool lowSent = false;
  bool longSent = false;
  bool lowPowerSent = false;

  /// The alerts that are due, in the order in which to post them.
  /// `since`: since when the machine is plugged in, or absent.
  /// `canDeliver`: false while alerts may not be shown; nothing counts as sent then, so an alert is
  /// due as soon as it may be shown if its condition still holds.
  /// `prime`: absorb what already holds (after launch and wake) instead of announcing it.
  /// `store` keeps what outlives the process: whether worn health was announced.
  [[nodiscard]] std::vector<PendingAlert> run(const BatteryState& state, std::optional<Date> since,
                                              Date now, const Prefs& prefs, bool canDeliver,
                                              bool prime, UserDefaults& store);

  /// Whether an alert of this kind was sent in an episode that still goes on. Worn health has no
  /// episodes: always true.
  [[nodiscard]] bool isOngoing(AlertKind kind) const;

  friend bool operator==(const AlertEngine&, const AlertEngine&) = default;
};

}  // namespace tollbeam
