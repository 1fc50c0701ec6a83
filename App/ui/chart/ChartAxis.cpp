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

// Closer than this, lines are a haze.
constexpr double kBetweenLines = 4;

struct HourLabel {
  int hour;
  double centre;
  double width;
  QString text;

  [[nodiscard]] double left() const { return centre - width / 2; }
  [[nodiscard]] double right() const { return centre + width / 2; }
};

std::vector<HourLabel> every(int hours, const std::vector<HourLabel>& labels) {
  std::vector<HourLabel> kept;
  std::copy_if(labels.begin(), labels.end(), std::back_inserter(kept),
               [hours](const HourLabel& label) { return label.hour % hours == 0; });
  return kept;
}

bool isCrowded(const std::vector<HourLabel>& labels, double gap) {
  return std::adjacent_find(labels.begin(), labels.end(),
                            [gap](const HourLabel& one, const HourLabel& next) {
                              return next.left() - one.right() < gap;
                            }) != labels.end();
}

double cut(double x, const QRectF& plot) { return std::clamp(x, plot.left(), plot.right()); }

// Letters where the abbreviations are too wide for a day.
bool needsLetters(const std::vector<DaySpan>& days, const ChartFrame& frame, const QLocale& locale,
                  const LabelRoom& room) {
  return std::any_of(days.begin(), days.end(), [&](const DaySpan& span) {
    const bool whole = span.start >= frame.from && span.end <= frame.now;
    return whole && frame.x(span.end) - frame.x(span.start) <
                        room.widthOf(weekdayText(span.day, locale)) + kBesideWeekday * room.scale;
  });
}

}  // namespace

TimeAxis hourAxis(const ChartFrame& frame, const Calendar& calendar, const QLocale& locale,
                  const LabelRoom& room) {
  TimeAxis axis;
  std::vector<HourLabel> labels;
  for (const HourTick& tick : hourTicks(frame.from, frame.now, calendar)) {
    const double x = frame.x(tick.at);
    axis.lines.push_back(x);
    QString text = hourText(tick.shown, locale);
    const double width = room.widthOf(text);
    const HourLabel label{tick.hour, x, width, std::move(text)};
    const bool isNearEdge = x < frame.plot.left() + kFromLeftEdge * room.scale ||
                            x > frame.plot.right() - kFromRightEdge * room.scale;
    if (isNearEdge || label.left() < room.left || label.right() > room.right) continue;
    labels.push_back(label);
  }
  for (const int hours : {6, 12, 24}) {
    labels = every(hours, labels);
    if (!isCrowded(labels, kBetweenHours * room.scale)) break;
  }
  for (HourLabel& label : labels) axis.labels.push_back({label.centre, std::move(label.text)});
  return axis;
}

TimeAxis dayAxis(const ChartFrame& frame, const Calendar& calendar, const QLocale& locale,
                 const LabelRoom& room) {
  TimeAxis axis;
  const auto days = daySpans(frame.from, frame.now, calendar);
  if (days.empty()) return axis;
  if (frame.plot.width() / static_cast<double>(days.size()) < kBetweenLines * room.scale) {
    return axis;
  }
  const bool letters = needsLetters(days, frame, locale, room);
  for (const DaySpan& span : days) {
    if (span.start > frame.from) axis.lines.push_back(frame.x(span.start));
    const double left = cut(frame.x(span.start), frame.plot);
    const double right = cut(frame.x(span.end), frame.plot);
    QString text = weekdayText(span.day, locale, letters);
    const double needed =
        std::max(kNarrowestDay * room.scale, room.widthOf(text) + kBesideWeekday * room.scale);
    if (right - left >= needed) axis.labels.push_back({(left + right) / 2, std::move(text)});
  }
  return axis;
}

}  // namespace tollbeam
