// What the popover says of a battery state: its colours, rows and sentences. Pure functions; the
// views only set them.
#pragma once

#include <QLocale>
#include <QString>
#include <vector>

#include "battery/BatteryState.h"
#include "platform/Calendar.h"
#include "ui/look/Colours.h"
#include "values/Date.h"

namespace tollbeam {

/// Red on the last fifth without a charger, green while charging and when full on the charger.
[[nodiscard]] Tint ringTint(const BatteryState& state);

/// A battery is made for so many cycles.
inline constexpr int kCyclesOfALife = 1000;

/// Warns as the end of the battery's life comes near.
[[nodiscard]] Tint cycleTint(std::int64_t count);

/// "212 of 1000".
[[nodiscard]] QString cycleText(std::int64_t count);

struct Reading {
  QString label;
  QString value;
  Ink color = Ink::secondary;

  friend bool operator==(const Reading&, const Reading&) = default;
};

/// The rows of what is known of the battery, in their order; a missing figure has no row.
[[nodiscard]] std::vector<Reading> readings(const BatteryState& state);

/// "Plugged in for 3 h 12 min".
[[nodiscard]] QString pluggedInText(Date since, Date now);

/// "Alerts snoozed until 15:05", however far away that is.
[[nodiscard]] QString snoozeText(Date until, const Calendar& calendar, const QLocale& locale);

}  // namespace tollbeam
