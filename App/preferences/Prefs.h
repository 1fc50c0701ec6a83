// All settings at one moment, and the two other values that outlive a run. The store is read afresh
// at every evaluation, so a change in the settings window counts from the next one. Nothing is
// clamped here: whatever number the store holds is used as it is.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

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

  /// The instant until which alerts are snoozed; absent when there is none or it has come (an
  /// expired deadline stays in the store).
  [[nodiscard]] static std::optional<Date> snoozeUntil(const UserDefaults& store, Date now);
  static void setSnoozeUntil(UserDefaults& store, std::optional<Date> deadline);

  friend bool operator==(const Prefs&, const Prefs&) = default;
};

/// The sound that stands for the desktop's own notification sound, and the one for silence.
inline constexpr const char* kDefaultSound = "default";
inline constexpr const char* kNoSound = "none";

}  // namespace tollbeam
