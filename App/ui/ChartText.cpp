#include "ui/ChartText.h"

#include <QCoreApplication>
#include <algorithm>

namespace tollbeam {

namespace {

// A sample comes every minute; after this long without one nobody knows the charge.
constexpr double kFresh = 900;

}  // namespace

QString spokenChart(std::span<const Sample> samples, int days, Date now) {
  const auto isPast = [now](const Sample& s) { return Date{s.t} <= now; };
  const auto end = std::partition_point(samples.begin(), samples.end(), isPast);
  if (end == samples.begin()) return {};
  const auto [lowest, highest] = std::minmax_element(
      samples.begin(), end, [](const Sample& one, const Sample& other) { return one.p < other.p; });
  const Sample& newest = *std::prev(end);
  const bool isFresh = now - Date{newest.t} <= kFresh;
  const auto low = QString::number(lowest->p);
  const auto high = QString::number(highest->p);
  const auto last = QString::number(newest.p);
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
