// All settings at one moment, and the two other values that outlive a run. The store is read afresh
// at every evaluation, so a change in the settings window counts from the next one. Nothing is
// clamped here: whatever number the store holds is used as it is.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/Calendar.h"
#include "platform/UserDefaults.h"
#include "values/AlertKind.h"
#include "values/Date.h"

namespace tollbeam {

struct Prefs {
  bool limitEnabled = false;                ///< charge-limit reminder on
  bool repeatReminder = false;              ///< repeat the charge-limit reminder
  bool lowEnabled = false;                  ///< low-battery alert on
  bool longEnabled = false;                 ///< plugged-in-too-long alert on
  bool healthEnabled = false;               ///< battery-health alert on
  bool quietEnabled = false;                ///< quiet hours on
  bool lowPowerEnabled = false;             ///< Low Power Mode suggestion on
  std::int64_t lowPowerAt = 0;              ///< percent below which Low Power Mode is suggested
  std::int64_t limit = 0;                   ///< charge limit, percent
  std::int64_t low = 0;                     ///< low-battery threshold, percent
  std::int64_t longHours = 0;               ///< hours plugged in before the too-long alert
  std::int64_t quietStart = 0;              ///< minutes after local midnight, 0 to 1439
  std::int64_t quietEnd = 0;                ///< minutes after local midnight
  bool showPercent = false;                 ///< percentage beside the status item's picture
  bool showTime = false;                    ///< remaining time beside the status item's picture
  std::map<AlertKind, std::string> sounds;  ///< exactly one entry per kind

  /// The twenty registered defaults, by key.
  [[nodiscard]] static const Dictionary& defaults();

  /// A snapshot of the store; registers the defaults first.
  [[nodiscard]] static Prefs current(UserDefaults& store);

  /// Whether `now` lies within quiet hours: start minute inside, end minute outside, over midnight
  /// when the start is later than the end, never when they are equal.
  [[nodiscard]] bool inQuietHours(Date now, const Calendar& calendar) const;

  /// The name of the kind's sound; the default's where there is no entry.
  [[nodiscard]] std::string sound(AlertKind kind) const;

  /// The instant until which alerts are snoozed; absent when there is none or it has passed
  /// (an expired deadline stays in the store).
  [[nodiscard]] static std::optional<Date> snoozeUntil(const UserDefaults& store, Date now);
  static void setSnoozeUntil(UserDefaults& store, std::optional<Date> deadline);

  friend bool operator==(const Prefs&, const Prefs&) = default;
};

/// The sound that stands for the desktop's own notification sound, and the one for silence.
inline constexpr const char* kDefaultSound = "default";
inline constexpr const char* kNoSound = "none";

/// A row of the one table of preference keys. A setting added there is registered, read and known
/// everywhere.
struct PrefsKey {
  std::string_view key;
  /// A flag, a whole number, or (for a sound) text.
  std::variant<bool, std::int64_t, const char*> registeredDefault;
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
