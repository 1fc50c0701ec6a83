#include "ui/chart/ChartAxis.h"

#include <algorithm>

#include "texts/LocaleFormats.h"
#include "ui/chart/ChartTicks.h"

namespace tollbeam {

namespace {

constexpr double kFromLeftEdge = 15;
constexpr double kFromRightEdge = 6;
constexpr double kBetweenHours = 6;
constexpr double kBesideWeekday = 4;
constexpr double kNarrowestDay = 26;
// Lines that are closer together than this are left out: they would look like a grey area.
constexpr double kBetweenLines = 4;

struct HourLabel {
  int hour;
  double left;
  double right;
  TimeLabel label;
};

}  // namespace

TimeAxis hourAxis(const ChartFrame& frame, const Calendar& calendar, const QLocale& locale,
                  const LabelRoom& room) {
  TimeAxis axis;
  std::vector<HourLabel> labels;
  for (const HourTick& tick : hourTicks(frame.from, frame.now, calendar)) {
    const double x = frame.x(tick.at);
    axis.lines.push_back(x);
    const QString text = hourText(tick.shown, locale);
    const double half = room.widthOf(text) / 2;
    const bool isNearEdge = x < frame.plot.left() + kFromLeftEdge * room.scale ||
                            x > frame.plot.right() - kFromRightEdge * room.scale;
    if (isNearEdge || x - half < room.left || x + half > room.right) continue;
    labels.push_back({tick.hour, x - half, x + half, {x, text}});
  }
  // Where they are crowded, noon and midnight remain, then midnight alone.
  const auto areClose = [&room](const HourLabel& one, const HourLabel& next) {
    return next.left - one.right < kBetweenHours * room.scale;
  };
  for (const int hours : {12, 24}) {
    if (std::adjacent_find(labels.begin(), labels.end(), areClose) == labels.end()) break;
    std::erase_if(labels, [hours](const HourLabel& label) { return label.hour % hours != 0; });
  }
  for (const HourLabel& label : labels) axis.labels.push_back(label.label);
  return axis;
}

TimeAxis dayAxis(const ChartFrame& frame, const Calendar& calendar, const QLocale& locale,
                 const LabelRoom& room) {
  TimeAxis axis;
  const auto days = daySpans(frame.from, frame.now, calendar);
  const double needed = kBetweenLines * room.scale * static_cast<double>(days.size());
  if (frame.plot.width() < needed) return axis;
  const auto widthFor = [&room](const QString& text) {
    return room.widthOf(text) + kBesideWeekday * room.scale;
  };
  // Where an abbreviation is wider than its day, all weekdays are letters.
  const bool letters = std::any_of(days.begin(), days.end(), [&](const DaySpan& span) {
    return span.start >= frame.from && span.end <= frame.now &&
           frame.x(span.end) - frame.x(span.start) < widthFor(weekdayText(span.day, locale));
  });
  for (const DaySpan& span : days) {
    if (span.start > frame.from) axis.lines.push_back(frame.x(span.start));
    const double left = std::max(frame.x(span.start), frame.plot.left());
    const double right = std::min(frame.x(span.end), frame.plot.right());
    const QString text = weekdayText(span.day, locale, letters);
    if (right - left < std::max(kNarrowestDay * room.scale, widthFor(text))) continue;
    axis.labels.push_back({(left + right) / 2, text});
  }
  return axis;
}

}  // namespace tollbeam
