#include "ui/chart/ChartText.h"

#include <QCoreApplication>
#include <algorithm>

namespace tollbeam {

namespace {

constexpr double kFresh = 900;

// The texts are translated with those of the chart.
class Words {
  Q_DECLARE_TR_FUNCTIONS(tollbeam::HistoryChart)
};

}  // namespace

QString spokenChart(std::span<const Sample> samples, int days, Date now) {
  // Samples are in the order in which they were recorded; after the clock was set back, earlier
  // ones may have later times, even beyond `now`.
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
  const auto count = QString::number(days);
  const auto low = QString::number(lowest);
  const auto high = QString::number(highest);
  const auto last = QString::number(newest->p);
  if (days == 1) {
    return isFresh ? Words::tr("Last 24 hours: %1% to %2%, now %3%.").arg(low, high, last)
                   : Words::tr("Last 24 hours: %1% to %2%.").arg(low, high);
  }
  return isFresh ? Words::tr("Last %1 days: %2% to %3%, now %4%.").arg(count, low, high, last)
                 : Words::tr("Last %1 days: %2% to %3%.").arg(count, low, high);
}

}  // namespace tollbeam
