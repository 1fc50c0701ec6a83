// The texts of one day in the columns of the daily summary.
#pragma once

#include <QLocale>
#include <QString>

#include "history/DaySummary.h"

namespace tollbeam {

struct SummaryText {
  QString day;       ///< "Mon 3", in the locale's order and digits
  QString average;   ///< "61%"
  QString range;     ///< "40–80%"
  QString charging;  ///< "1 h 48 min", or a dash for none
  QString spoken;    ///< the whole row in one sentence, for screen readers

  bool operator==(const SummaryText&) const = default;
};

[[nodiscard]] SummaryText summaryText(const DaySummary& summary, const Calendar& calendar,
                                      const QLocale& locale);

/// The headings of the columns.
[[nodiscard]] SummaryText summaryHeadings();

}  // namespace tollbeam
