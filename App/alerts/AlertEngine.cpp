#include "alerts/AlertEngine.h"

#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

namespace tollbeam {

namespace {

constexpr int kMostReminders = 4;
// Ten seconds short of the five minutes that the settings promise: refreshes come every sixty
// seconds with some slack, and a strict five minutes would often become six.
constexpr double kReminderSpacing = 290;
constexpr double kWornBelow = 80;
constexpr double kHealthyAgainFrom = 82;

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

  // Re-arms a kind whose condition is over; `sent` is its memory of the episode.
  const auto mayAlert = [&](AlertKind kind, bool holds, auto& sent) {
    if (!holds) {
      suppressed.erase(kind);
      sent = {};
    } else if (prime) {
      suppressed.insert(kind);
    }
    return holds && !prime && canDeliver && !suppressed.contains(kind);
  };
  // On external power means plugged in, charging or not: a firmware hold is no reason to remind
  // of a low battery.
  const bool atLimit = state.pluggedIn && state.percent >= prefs.limit;
  const std::string percent = std::to_string(state.percent);
  std::vector<PendingAlert> due;

  if (mayAlert(AlertKind::chargeLimit, prefs.limitEnabled && atLimit, chargeSent) &&
      chargeSent < (prefs.repeatReminder ? kMostReminders : 1) &&
      (chargeSent <= 0 || now - chargeLast >= kReminderSpacing)) {
    ++chargeSent;
    chargeLast = now;
    due.push_back({AlertKind::chargeLimit,
                   "Charge limit reached",
                   {"Battery is at %1%. Unplug to keep it healthy.", {percent}}});
  }
  const bool low = prefs.lowEnabled && !state.pluggedIn && state.percent <= prefs.low;
  if (mayAlert(AlertKind::low, low, lowSent) && !std::exchange(lowSent, true)) {
    due.push_back({AlertKind::low, "Low battery", {"Battery is at %1%. Plug in soon.", {percent}}});
  }
  const bool lowPower = prefs.lowPowerEnabled && !state.pluggedIn &&
                        state.percent < prefs.lowPowerAt && !state.lowPowerMode;
  if (mayAlert(AlertKind::lowPower, lowPower, lowPowerSent) && !std::exchange(lowPowerSent, true)) {
    due.push_back(
        {AlertKind::lowPower,
         "Try Low Power Mode",
         {"Battery is at %1%. Turn on Low Power Mode (System Settings, Battery) to stretch it.",
          {percent}}});
  }
  const bool tooLong = prefs.longEnabled && atLimit && since &&
                       now - *since > static_cast<double>(prefs.longHours) * 3600;
  if (mayAlert(AlertKind::tooLong, tooLong, longSent) && !std::exchange(longSent, true)) {
    due.push_back({AlertKind::tooLong,
                   "Plugged in for a long time",
                   {"Plugged in for over %1 h at %2%. Unplug it to let the battery rest.",
                    {std::to_string(wholeNumber((now - *since) / 3600)), percent}}});
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
