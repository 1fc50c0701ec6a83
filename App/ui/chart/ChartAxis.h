// The chart's time axis as it is drawn: lines, and the labels that have room.
#pragma once

#include <QLocale>
#include <QString>
#include <functional>
#include <vector>

#include "platform/Calendar.h"
#include "ui/chart/ChartFrame.h"

namespace tollbeam {

struct TimeLabel {
  double centre = 0;
  QString text;
};

struct TimeAxis {
  std::vector<double> lines;
  std::vector<TimeLabel> labels;
};

/// How texts are measured, and what they may take.
struct LabelRoom {
  std::function<double(const QString&)> widthOf;
  double scale = 1;  ///< of the measures below
  double left = 0;   ///< no label reaches beyond
  double right = 0;
};

/// For a range of a day: lines and labels at 0, 6, 12 and 18 o'clock.
[[nodiscard]] TimeAxis hourAxis(const ChartFrame& frame, const Calendar& calendar,
                                const QLocale& locale, const LabelRoom& room);

/// For longer ones: lines at midnight, the weekday between two of them.
[[nodiscard]] TimeAxis dayAxis(const ChartFrame& frame, const Calendar& calendar,
                               const QLocale& locale, const LabelRoom& room);

}  // namespace tollbeam
