// The five reminders. The raw value is the kind's name and doubles as its notification identifier.
// Each has its settings, so the kinds stand here, below the rules that decide when one is due.
#pragma once

#include <array>
#include <string_view>

namespace tollbeam {

enum class AlertKind {
  chargeLimit,  ///< charge reached the limit while plugged in
  low,          ///< battery low while on battery
  tooLong,      ///< plugged in at or above the limit for too long
  health,       ///< capacity fell below 80 % of design
  lowPower,     ///< suggest Low Power Mode while on battery
};

inline constexpr std::array kAllAlertKinds = {AlertKind::chargeLimit, AlertKind::low,
                                              AlertKind::tooLong, AlertKind::health,
                                              AlertKind::lowPower};

[[nodiscard]] std::string_view rawValue(AlertKind kind);

}  // namespace tollbeam
