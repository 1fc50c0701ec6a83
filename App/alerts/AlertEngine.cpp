#include "alerts/AlertEngine.h"

#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

#include "preferences/PrefsKeys.h"

namespace tollbeam {

namespace {

constexpr int kMostReminders = 4;
// Ten seconds short of the five minutes that the settings promise: refreshes come every sixty
// seconds with some slack, and a strict five minutes would often become six.
constexpr double kReminderSpacing = 290;
constexpr double kWornBelow = 80;
constexpr double kHealthyAgainFrom = 82;

struct Conditions {
  bool chargeLimit;
  bool low;
  bool tooLong;
  bool lowPower;
};

Conditions conditions(const BatteryState& s, std::optional<Date> since, Date now, const Prefs& p) {
  // On external power means plugged in, charging or not: a firmware hold is no reason to remind
  // of a low battery.
  const bool atLimit = s.pluggedIn && s.percent >= p.limit;
  return {
      .chargeLimit = p.limitEnabled && atLimit,
      .low = p.lowEnabled && !s.pluggedIn && s.percent <= p.low,
      .tooLong = p.longEnabled && atLimit && since &&
                 now - *since > static_cast<double>(p.longHours) * 3600,
      .lowPower = p.lowPowerEnabled && !s.pluggedIn && s.percent < p.lowPowerAt && !s.lowPowerMode,
  };
}

// Stops the process for a number that is no integer: a fault of ours, as all inputs are finite.
std::int64_t wholeNumber(double number) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (!(number >= -kTwoTo63 && number < kTwoTo63)) std::abort();
  return static_cast<std::int64_t>(number);
}

// Reminds that full capacity has fallen below 80 % of design, once; two points of hysteresis
// re-arm it. Runs at every evaluation, so that a battery that was worn before is never announced.
std::optional<PendingAlert> healthAlert(const BatteryState& state, const Prefs& prefs,
                                        bool canDeliver, bool prime, UserDefaults& store) {
  const auto percent = state.healthPercent();
  if (!percent) return std::nullopt;
  const bool sent = store.boolForKey(kHealthAlertSentKey);
  if (*percent >= kWornBelow) {
    if (*percent >= kHealthyAgainFrom && sent) store.set(kHealthAlertSentKey, false);
    return std::nullopt;
  }
  if (sent) return std::nullopt;
  if (prime) {
    store.set(kHealthAlertSentKey, true);
    return std::nullopt;
  }
  if (!prefs.healthEnabled || !canDeliver) return std::nullopt;
  store.set(kHealthAlertSentKey, true);
  return PendingAlert{AlertKind::health,
                      "Battery health is low",
                      {"Battery health has fallen to %1% of its original capacity.",
                       {std::to_string(wholeNumber(std::round(*percent)))}}};
}

}  // namespace

std::vector<PendingAlert> AlertEngine::run(const BatteryState& state, std::optional<Date> since,
                                           Date now, const Prefs& prefs, bool canDeliver,
                                           bool prime, UserDefaults& store) {
  if (!state.hasBattery) {
    *this = AlertEngine{.suppressed = {}, .chargeLast = chargeLast};
    return {};
  }

  const Conditions holds = conditions(state, since, now, prefs);
  const auto rearmOrPrime = [&](AlertKind kind, bool condition, auto& memory) {
    if (!condition) {
      suppressed.erase(kind);
      memory = {};
    } else if (prime) {
      suppressed.insert(kind);
    }
  };
  rearmOrPrime(AlertKind::chargeLimit, holds.chargeLimit, chargeSent);
  rearmOrPrime(AlertKind::low, holds.low, lowSent);
  rearmOrPrime(AlertKind::tooLong, holds.tooLong, longSent);
  rearmOrPrime(AlertKind::lowPower, holds.lowPower, lowPowerSent);

  std::vector<PendingAlert> due;
  const std::string percent = std::to_string(state.percent);
  if (!prime && canDeliver) {
    const auto mayAlert = [&](AlertKind kind, bool condition) {
      return condition && !suppressed.contains(kind);
    };
    if (mayAlert(AlertKind::chargeLimit, holds.chargeLimit) &&
        chargeSent < (prefs.repeatReminder ? kMostReminders : 1) &&
        (chargeSent <= 0 || now - chargeLast >= kReminderSpacing)) {
      ++chargeSent;
      chargeLast = now;
      due.push_back({AlertKind::chargeLimit,
                     "Charge limit reached",
                     {"Battery is at %1%. Unplug to keep it healthy.", {percent}}});
    }
    if (mayAlert(AlertKind::low, holds.low) && !std::exchange(lowSent, true)) {
      due.push_back(
          {AlertKind::low, "Low battery", {"Battery is at %1%. Plug in soon.", {percent}}});
    }
    if (mayAlert(AlertKind::lowPower, holds.lowPower) && !std::exchange(lowPowerSent, true)) {
      due.push_back(
          {AlertKind::lowPower,
           "Try Low Power Mode",
           {"Battery is at %1%. Turn on Low Power Mode (System Settings, Battery) to stretch it.",
            {percent}}});
    }
    if (mayAlert(AlertKind::tooLong, holds.tooLong) && !std::exchange(longSent, true)) {
      const std::int64_t hours = wholeNumber((now - *since) / 3600);
      due.push_back({AlertKind::tooLong,
                     "Plugged in for a long time",
                     {"Plugged in for over %1 h at %2%. Unplug it to let the battery rest.",
                      {std::to_string(hours), percent}}});
    }
  }

  if (auto health = healthAlert(state, prefs, canDeliver, prime, store)) {
    due.push_back(*std::move(health));
  }
  return due;
}

bool AlertEngine::isOngoing(AlertKind kind) const {
  switch (kind) {
    case AlertKind::chargeLimit:
      return chargeSent > 0;
    case AlertKind::low:
      return lowSent;
    case AlertKind::tooLong:
      return longSent;
    case AlertKind::lowPower:
      return lowPowerSent;
    case AlertKind::health:
      return true;
  }
  std::abort();
}

}  // namespace tollbeam
