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

constexpr double kNoticeableWatts = 0.1;
constexpr double kLastSecond = 253402300799;  // of the year 9999

QString say(const char* text) { return QCoreApplication::translate("tollbeam::PopoverView", text); }

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

QString cycleText(std::int64_t count) {
  return say(QT_TRANSLATE_NOOP("tollbeam::PopoverView", "%1 of 1000")).arg(count);
}

std::vector<Reading> readings(const BatteryState& state) {
  std::vector<Reading> rows;
  const auto row = [&rows](const char* label, const QString& value, Ink color = Ink::secondary) {
    rows.push_back({say(label), value, color});
  };
  const auto health = state.healthPercent();
  const auto grade = state.healthLabel();
  if (health && grade) {
    row(QT_TRANSLATE_NOOP("tollbeam::PopoverView", "Battery health"),
        say(QT_TRANSLATE_NOOP("tollbeam::PopoverView", "%1% · %2"))
            .arg(decimal(*health, 0), translated(*grade)),
        healthColor(*health));
  }
  if (state.temperatureC) {
    row(QT_TRANSLATE_NOOP("tollbeam::PopoverView", "Temperature"),
        decimal(*state.temperatureC, 1) + QStringLiteral(" °C"));
  }
  if (state.voltage && state.amperage) {
    const double watts = *state.voltage * *state.amperage;
    if (std::abs(watts) >= kNoticeableWatts) {
      row(watts > 0 ? QT_TRANSLATE_NOOP("tollbeam::PopoverView", "Power in")
                    : QT_TRANSLATE_NOOP("tollbeam::PopoverView", "Power out"),
          decimal(std::abs(watts), 1) + QStringLiteral(" W"));
    }
  }
  if (state.pluggedIn && state.adapterWatts) {
    row(QT_TRANSLATE_NOOP("tollbeam::PopoverView", "Adapter"),
        QStringLiteral("%1 W").arg(*state.adapterWatts));
  }
  return rows;
}

QString pluggedInText(Date since, Date now) {
  // A sample may carry any time. fmax and fmin also turn what is no number into a bound.
  constexpr double kMostMinutes = 1e12;
  const double elapsed = std::fmin(std::fmax((now - since) / 60, 0), kMostMinutes);
  const auto minutes = static_cast<std::int64_t>(elapsed);
  return say(QT_TRANSLATE_NOOP("tollbeam::PopoverView", "Plugged in for %1"))
      .arg(translated(formatMinutes(minutes)));
}

QString snoozeText(Date until, const Calendar& calendar, const QLocale& locale) {
  // A deadline beyond all years can only have been written by hand.
  const Date shown{std::min(until.secondsSince1970, kLastSecond)};
  return say(QT_TRANSLATE_NOOP("tollbeam::PopoverView", "Alerts snoozed until %1"))
      .arg(timeText(calendar.timeOfDay(shown), locale));
}

}  // namespace tollbeam
