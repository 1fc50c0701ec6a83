#include "ui/popover/PopoverContent.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

#include "battery/FormatDecimal.h"
#include "battery/FormatMinutes.h"
#include "texts/LocaleFormats.h"
#include "texts/Translated.h"

namespace tollbeam {

namespace {

constexpr double kLeastWatts = 0.1;
constexpr double kLastSecond = 253402300799;  // of the year 9999

// The texts are translated with those of the view.
class Words {
  Q_DECLARE_TR_FUNCTIONS(tollbeam::PopoverView)
};

QString decimal(double number, int decimals) {
  return QString::fromStdString(formatDecimal(number, decimals));
}

Ink healthColor(double percent) {
  if (percent > 90) return Ink::green;
  return percent >= 80 ? Ink::orange : Ink::red;
}

}  // namespace

Tint ringTint(const BatteryState& state) {
  if (!state.pluggedIn && state.percent < 21) return Tint::red;
  const bool full = state.isCharged || (state.pluggedIn && state.percent > 99);
  return state.isCharging || full ? Tint::green : Tint::accent;
}

Tint cycleTint(std::int64_t count) {
  if (count > 900) return Tint::red;
  return count > 700 ? Tint::orange : Tint::accent;
}

QString cycleText(std::int64_t count) { return Words::tr("%1 of 1000").arg(count); }

std::vector<Reading> readings(const BatteryState& state) {
  std::vector<Reading> rows;
  const auto health = state.healthPercent();
  const auto grade = state.healthLabel();
  if (health && grade) {
    rows.push_back({Words::tr("Battery health"),
                    Words::tr("%1% · %2").arg(decimal(*health, 0), translated(*grade)),
                    healthColor(*health)});
  }
  if (state.temperatureC) {
    rows.push_back(
        {Words::tr("Temperature"), decimal(*state.temperatureC, 1) + QStringLiteral(" °C")});
  }
  if (state.voltage && state.amperage) {
    const double watts = *state.voltage * *state.amperage;
    if (std::abs(watts) >= kLeastWatts) {
      rows.push_back({watts > 0 ? Words::tr("Power in") : Words::tr("Power out"),
                      decimal(std::abs(watts), 1) + QStringLiteral(" W")});
    }
  }
  if (state.pluggedIn && state.adapterWatts) {
    rows.push_back({Words::tr("Adapter"), QStringLiteral("%1 W").arg(*state.adapterWatts)});
  }
  return rows;
}

QString pluggedInText(Date since, Date now) {
  // A sample may have any time. fmax and fmin also turn NaN into a bound.
  constexpr double kMostMinutes = 1e12;
  const double elapsed = std::fmin(std::fmax((now - since) / 60, 0), kMostMinutes);
  const auto minutes = static_cast<std::int64_t>(elapsed);
  return Words::tr("Plugged in for %1").arg(translated(formatMinutes(minutes)));
}

QString snoozeText(Date until, const Calendar& calendar, const QLocale& locale) {
  // A file edited by hand may hold a deadline that no calendar can name.
  const Date shown{std::min(until.secondsSince1970, kLastSecond)};
  return Words::tr("Alerts snoozed until %1").arg(timeText(calendar.timeOfDay(shown), locale));
}

}  // namespace tollbeam
