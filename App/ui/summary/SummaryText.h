// What one day of the daily summary says in its columns.
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

  /// All of it in one sentence, for those who hear it.
  QString spoken;

  bool operator==(const SummaryText&) const = default;
};

[[nodiscard]] SummaryText summaryText(const DaySummary& summary, const Calendar& calendar,
                                      const QLocale& locale);

/// The columns' heads.
[[nodiscard]] SummaryText summaryHeads();

}  // namespace tollbeam
