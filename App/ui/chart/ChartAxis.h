// The chart's time axis: lines, and the labels for which there is room.
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

/// How wide texts are, and where labels may be.
struct LabelRoom {
  std::function<double(const QString&)> widthOf;
  double scale = 1;
  double left = 0;  ///< no label extends beyond these two
  double right = 0;
};

/// For a range of about a day: lines and labels at 0, 6, 12 and 18 o'clock.
[[nodiscard]] TimeAxis hourAxis(const ChartFrame& frame, const Calendar& calendar,
                                const QLocale& locale, const LabelRoom& room);

/// For longer ranges: lines at midnight, and weekdays between them.
[[nodiscard]] TimeAxis dayAxis(const ChartFrame& frame, const Calendar& calendar,
                               const QLocale& locale, const LabelRoom& room);

}  // namespace tollbeam
