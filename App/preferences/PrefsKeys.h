// The one table of preference keys: key, registered default, and the member of Prefs that it is
// read into. A setting added here is registered, read and known everywhere.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <variant>

#include "preferences/Prefs.h"

namespace tollbeam {

struct PrefsKey {
  std::string_view key;
  /// A flag, a whole number, or (for a sound) text.
  std::variant<bool, std::int64_t, std::string_view> registeredDefault;
  /// Where Prefs keeps it; for a sound, the entry of `sounds`.
  std::variant<bool Prefs::*, std::int64_t Prefs::*, AlertKind> member;
};

constexpr std::int64_t minutesAfterMidnight(int hour, int minute) { return hour * 60 + minute; }

inline constexpr std::array<PrefsKey, 20> kPrefsKeys = {{
    {"limitEnabled", true, &Prefs::limitEnabled},
    {"limit", std::int64_t{80}, &Prefs::limit},
    {"repeatReminder", true, &Prefs::repeatReminder},
    {"limitSound", kDefaultSound, AlertKind::chargeLimit},
    {"lowEnabled", true, &Prefs::lowEnabled},
    {"low", std::int64_t{20}, &Prefs::low},
    {"lowSound", kDefaultSound, AlertKind::low},
    {"longEnabled", true, &Prefs::longEnabled},
    {"longHours", std::int64_t{8}, &Prefs::longHours},
    {"longSound", kDefaultSound, AlertKind::tooLong},
    {"lowPowerEnabled", true, &Prefs::lowPowerEnabled},
    {"lowPowerAt", std::int64_t{30}, &Prefs::lowPowerAt},
    {"lowPowerSound", kDefaultSound, AlertKind::lowPower},
    {"healthEnabled", true, &Prefs::healthEnabled},
    {"healthSound", kDefaultSound, AlertKind::health},
    {"quietEnabled", false, &Prefs::quietEnabled},
    {"quietStart", minutesAfterMidnight(22, 0), &Prefs::quietStart},
    {"quietEnd", minutesAfterMidnight(7, 0), &Prefs::quietEnd},
    {"showPercent", true, &Prefs::showPercent},
    {"showTime", false, &Prefs::showTime},
}};

/// Seconds since 1970 until which alerts are snoozed; not registered, reads as 0.
inline constexpr std::string_view kSnoozeUntilKey = "snoozeUntil";
/// Whether worn health was announced (or known at a launch); not registered, reads as false.
inline constexpr std::string_view kHealthAlertSentKey = "healthAlertSent";

}  // namespace tollbeam
