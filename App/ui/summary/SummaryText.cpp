#include "ui/summary/SummaryText.h"

#include <QCoreApplication>

#include "battery/FormatMinutes.h"
#include "texts/LocaleFormats.h"
#include "texts/Translated.h"

namespace tollbeam {

namespace {

// The texts are translated with those of the view.
class Words {
  Q_DECLARE_TR_FUNCTIONS(tollbeam::DailySummaryView)
};

}  // namespace

SummaryText summaryText(const DaySummary& summary, const Calendar& calendar,
                        const QLocale& locale) {
  SummaryText text;
  text.day = weekdayAndDayText(calendar.day(summary.day), locale);
  text.average = Words::tr("%1%").arg(summary.avgPercent);
  text.range = Words::tr("%1–%2%").arg(QString::number(summary.minPercent),
                                       QString::number(summary.maxPercent));
  const bool charged = summary.chargingMinutes >= 1;
  text.charging =
      charged ? translated(formatMinutes(summary.chargingMinutes)) : QStringLiteral("–");
  text.spoken = charged ? Words::tr("%1: average %2, range %3, charging %4")
                              .arg(text.day, text.average, text.range, text.charging)
                        : Words::tr("%1: average %2, range %3, no charging")
                              .arg(text.day, text.average, text.range);
  return text;
}

SummaryText summaryHeadings() {
  SummaryText text{
      Words::tr("Day"), Words::tr("Avg"), Words::tr("Range"), Words::tr("Charging"), {}};
  text.spoken =
      QStringList{text.day, text.average, text.range, text.charging}.join(QStringLiteral(", "));
  return text;
}

}  // namespace tollbeam
