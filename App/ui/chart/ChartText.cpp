#include "ui/chart/ChartText.h"

#include <QCoreApplication>
#include <algorithm>

namespace tollbeam {

namespace {

// A sample comes every minute; after this long without one nobody knows the charge.
constexpr double kFresh = 900;

}  // namespace

QString spokenChart(std::span<const Sample> samples, int days, Date now) {
  // The samples stand as they came. After the clock was set back, what came before is of later
  // times, some of them still to come.
  const Sample* newest = nullptr;
  std::int64_t lowest = 0;
  std::int64_t highest = 0;
  for (const Sample& sample : samples) {
    if (now < Date{sample.t}) continue;
    lowest = newest ? std::min(lowest, sample.p) : sample.p;
    highest = newest ? std::max(highest, sample.p) : sample.p;
    newest = &sample;
  }
  if (!newest) return {};
  const bool isFresh = now - Date{newest->t} <= kFresh;
  const auto low = QString::number(lowest);
  const auto high = QString::number(highest);
  const auto last = QString::number(newest->p);
  if (days == 1) {
    return isFresh
               ? QCoreApplication::translate("tollbeam::HistoryChart",
                                             "Last 24 hours: %1% to %2%, now %3%.")
                     .arg(low, high, last)
               : QCoreApplication::translate("tollbeam::HistoryChart", "Last 24 hours: %1% to %2%.")
                     .arg(low, high);
  }
  const auto count = QString::number(days);
  return isFresh
             ? QCoreApplication::translate("tollbeam::HistoryChart",
                                           "Last %1 days: %2% to %3%, now %4%.")
                   .arg(count, low, high, last)
             : QCoreApplication::translate("tollbeam::HistoryChart", "Last %1 days: %2% to %3%.")
                   .arg(count, low, high);
}

}  // namespace tollbeam
