#include "ui/ChartPicture.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/controls/PixelGrid.h"

namespace tollbeam {

namespace {

constexpr double kAbovePlot = 6;
constexpr double kBelowPlot = 18;
constexpr double kBelowBaseline = 2;
constexpr double kBetweenPlotAndLabels = 3;
constexpr double kValueColumn = 34;
constexpr double kBesideValue = 6;
constexpr double kLineWidth = 2;
constexpr double kBeyondPlot = 1;

QString valueText(int percent) {
  return QCoreApplication::translate("tollbeam::HistoryChart", "%1%").arg(percent);
}

// The line without the points in the middle of its level stretches: nobody sees them.
std::vector<QPolygonF> linesOf(const std::vector<ChartPoint>& points, const ChartFrame& frame) {
  std::vector<QPolygonF> lines;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const bool begins = i == 0 || points[i - 1].seg != points[i].seg;
    const bool ends = i + 1 == points.size() || points[i + 1].seg != points[i].seg;
    if (begins) lines.emplace_back();
    const bool level = !begins && !ends && points[i - 1].pct == points[i].pct &&
                       points[i].pct == points[i + 1].pct;
    if (!level) lines.back() << QPointF(frame.x(points[i].date), frame.y(points[i].pct));
  }
  return lines;
}

}  // namespace

ChartPicture::ChartPicture(Content content, const QRectF& area, Qt::LayoutDirection direction,
                           const Style& style, const Calendar& calendar, const QLocale& locale)
    : points_(std::move(content.points)), right_(area.right()) {
  const QFontMetricsF metrics(style.font(Role::caption2));
  const auto widthOf = [&metrics](const QString& text) { return metrics.horizontalAdvance(text); };
  const double column = std::max<double>(
      style.px(kValueColumn), std::ceil(widthOf(valueText(100))) + style.px(kBesideValue));
  const bool mirrored = direction == Qt::RightToLeft;
  const double width = std::max(area.width() - column, 1.0);
  const double left = mirrored ? area.right() - width : area.left();
  const auto plotTo = [&](double bottom) {
    const double top = area.top() + style.px(kAbovePlot);
    frame_ = {QRectF(left, top, width, std::max(bottom - top, 1.0)), content.from, content.now};
  };
  plotTo(area.bottom() - style.px(kBelowPlot));

  const LabelRoom room{widthOf, style.scale(), area.left(), area.right()};
  TimeAxis axis = content.hours ? hourAxis(frame_, calendar, locale, room)
                                : dayAxis(frame_, calendar, locale, room);

  // Scripts with deep or high letters lift the baseline and press the plot a little.
  double ascent = 0;
  double descent = style.px(kBelowBaseline);
  for (const TimeLabel& label : axis.labels) {
    const QRectF ink = metrics.tightBoundingRect(label.text);
    ascent = std::max(ascent, std::ceil(-ink.top()));
    descent = std::max(descent, std::ceil(ink.bottom()));
  }
  const double baseline = area.bottom() - descent;
  plotTo(std::min(frame_.plot.bottom(), baseline - ascent - style.px(kBetweenPlotAndLabels)));

  for (TimeLabel& label : axis.labels) {
    const double start = label.centre - widthOf(label.text) / 2;
    labels_.push_back({{start, baseline}, std::move(label.text)});
  }
  const double halfDigit = metrics.tightBoundingRect(QStringLiteral("0")).height() / 2;
  for (const int percent : {0, 50, 100}) {
    const double y = std::round(frame_.y(percent));
    rows_.push_back(y);
    QString text = valueText(percent);
    const double start = mirrored ? area.left() : area.right() - widthOf(text);
    labels_.push_back({{start, std::round(y + halfDigit)}, std::move(text)});
  }
  columns_ = std::move(axis.lines);
  lines_ = linesOf(points_, frame_);
}

void ChartPicture::paint(QPainter& painter, const Style& style) const {
  paintGrid(painter, style);
  painter.setPen(style.colours().secondary);
  painter.setFont(style.font(Role::caption2));
  for (const Label& label : labels_) {
    painter.setLayoutDirection(label.text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(label.start, label.text);
  }
  paintLines(painter, style);
}

void ChartPicture::paintGrid(QPainter& painter, const Style& style) const {
  const QRectF& plot = frame_.plot;
  const PixelGrid grid(painter, style.px(1));
  for (const double y : rows_) {
    painter.fillRect(grid.row(y, plot.left(), plot.right()), style.colours().hairline);
  }
  for (const double x : columns_) {
    // The last pixel of the widget, not the first one beyond it.
    const double inside = std::min(x, right_ - style.px(1) / 2.0);
    painter.fillRect(grid.column(inside, plot.top(), plot.bottom()), style.colours().gridLine);
  }
}

void ChartPicture::paintLines(QPainter& painter, const Style& style) const {
  const double width = style.px(kLineWidth);
  const double beyond = style.px(kBeyondPlot);
  painter.save();
  painter.setClipRect(frame_.plot.adjusted(-beyond, -beyond, beyond, beyond), Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(style.colours().accent, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (const QPolygonF& line : lines_) {
    if (line.size() == 1) {
      painter.drawPoint(line.first());
    } else {
      painter.drawPolyline(line);
    }
  }
  painter.restore();
}

}  // namespace tollbeam
