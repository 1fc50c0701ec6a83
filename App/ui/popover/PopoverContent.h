// The colours, rows and sentences with which the popover shows a battery state.
#pragma once

#include <QLocale>
#include <QString>
#include <vector>

#include "battery/BatteryState.h"
#include "platform/Calendar.h"
#include "ui/look/Colours.h"
#include "values/Date.h"

namespace tollbeam {

/// Red for the last fifth of the charge on battery, green while charging or full on the charger.
[[nodiscard]] Tint ringTint(const BatteryState& state);

/// The number of cycles for which a battery is made.
inline constexpr int kCyclesOfALife = 1000;

/// Orange, then red, as the battery nears the end of its life.
[[nodiscard]] Tint cycleTint(std::int64_t count);

/// "212 of 1000".
[[nodiscard]] QString cycleText(std::int64_t count);

struct Reading {
  QString label;
  QString value;
  Ink color = Ink::secondary;

  friend bool operator==(const Reading&, const Reading&) = default;
};

/// One row for each known figure, from top to bottom.
[[nodiscard]] std::vector<Reading> readings(const BatteryState& state);

/// "Plugged in for 3 h 12 min".
[[nodiscard]] QString pluggedInText(Date since, Date now);

/// "Alerts snoozed until 15:05". Any deadline is harmless.
[[nodiscard]] QString snoozeText(Date until, const Calendar& calendar, const QLocale& locale);

}  // namespace tollbeam
