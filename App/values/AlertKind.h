#pragma once

#include <array>
#include <cstdlib>
#include <string_view>

namespace tollbeam {

/// The five reminders. Each has its settings, so they stand below the rules that decide when one is
/// due.
enum class AlertKind {
  chargeLimit,  ///< charge reached the limit while plugged in
  low,          ///< battery low while on battery
  tooLong,      ///< plugged in at or above the limit for too long
  health,       ///< capacity fell below 80 % of design
  lowPower,     ///< suggest Low Power Mode while on battery
};

/// Every kind once.
inline constexpr std::array kAllAlertKinds = {AlertKind::chargeLimit, AlertKind::low,
                                              AlertKind::tooLong, AlertKind::health,
                                              AlertKind::lowPower};

/// The kind's name, which is also the identifier of its notification.
[[nodiscard]] constexpr std::string_view rawValue(AlertKind kind) {
  switch (kind) {
    case AlertKind::chargeLimit:
      return "chargeLimit";
    case AlertKind::low:
      return "low";
    case AlertKind::tooLong:
      return "tooLong";
    case AlertKind::health:
      return "health";
    case AlertKind::lowPower:
      return "lowPower";
  }
  std::abort();
}

}  // namespace tollbeam
