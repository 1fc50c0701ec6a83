// Times and days in short forms that QLocale lacks, in the locale's own order and digits.
#pragma once

#include <QLocale>
#include <QString>

#include "values/CalendarDay.h"
#include "values/TimeOfDay.h"

namespace tollbeam {

/// The format of `timeText`, as QLocale and QDateTimeEdit take it: hours and minutes alone, every
/// letter that is no field in quotes.
[[nodiscard]] QString shortTimeFormat(const QLocale& locale);

/// Hours and minutes: "18:00", "6:00 PM".
[[nodiscard]] QString timeText(TimeOfDay time, const QLocale& locale);

/// The same for a full hour, without the minutes where twelve hours are counted: "18:00", "6 PM".
[[nodiscard]] QString hourText(TimeOfDay time, const QLocale& locale);

/// The weekday on its own, abbreviated, or a letter or two when `narrow`: "Mon", "M".
[[nodiscard]] QString weekdayText(CalendarDay day, const QLocale& locale, bool narrow = false);

/// Abbreviated weekday and day of the month, in the order of the locale's long dates, with
/// the mark that it puts after a day: "Mon 3", "Mo. 3.", "3日 (月)".
[[nodiscard]] QString weekdayAndDayText(CalendarDay day, const QLocale& locale);

}  // namespace tollbeam
