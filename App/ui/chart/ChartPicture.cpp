#include "ui/chart/ChartPicture.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "ui/controls/PixelGrid.h"
#include "ui/controls/TextLine.h"

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
constexpr qsizetype kLongestPiece = 10;

QString valueText(int percent) {
  return QCoreApplication::translate("tollbeam::HistoryChart", "%1%").arg(percent);
}

// The points of each segment as polylines. Points inside a level stretch are left out, because they
// do not show. Long lines are split into pieces that share a point, because the time to paint a
// polyline grows with the square of its length.
std::vector<QPolygonF> linesOf(const std::vector<ChartPoint>& points, const ChartFrame& frame) {
  std::vector<QPolygonF> lines;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const bool begins = i == 0 || points[i - 1].seg != points[i].seg;
    const bool ends = i + 1 == points.size() || points[i + 1].seg != points[i].seg;
    const bool level = !begins && !ends && points[i - 1].pct == points[i].pct &&
                       points[i].pct == points[i + 1].pct;
    // The line turns back where the clock was set back.
    const bool onward = !begins && !ends && points[i - 1].date <= points[i].date &&
                        points[i].date <= points[i + 1].date;
    if (level && onward) continue;
    if (begins) {
      lines.emplace_back();
    } else if (lines.back().size() >= kLongestPiece) {
      lines.push_back({lines.back().last()});
    }
    lines.back() << frame.at(points[i]);
  }
  return lines;
}

// The area of the letters, with the baseline at 0. QFontMetricsF leaves out the tails of Arabic
// letters at the end of a word.
QRectF inkOf(const QString& text, const QFont& font) {
  QPainterPath outline;
  outline.addText(0, 0, font, text);
  return outline.boundingRect();
}

}  // namespace

ChartPicture::ChartPicture(Content content, const QRectF& area, Qt::LayoutDirection direction,
                           const Style& style, const Calendar& calendar, const QLocale& locale)
    : points_(std::move(content.points)), area_(area) {
  const bool mirrored = direction == Qt::RightToLeft;
  const QFontMetricsF metrics(style.font(Role::caption2));
  const auto widthOf = [&metrics](const QString& text) { return metrics.horizontalAdvance(text); };
  const double column = std::max<double>(
      style.px(kValueColumn), std::ceil(widthOf(valueText(100))) + style.px(kBesideValue));
  const double width = std::max(area.width() - column, 1.0);
  const double left = mirrored ? area.right() - width : area.left();
  frame_ = {QRectF(left, area.top() + style.px(kAbovePlot), width, 1), content.from, content.now};

  const LabelRoom room{widthOf, style.scale(), area.left(), area.right()};
  TimeAxis axis = content.hours ? hourAxis(frame_, calendar, locale, room)
                                : dayAxis(frame_, calendar, locale, room);
  columns_ = std::move(axis.lines);
  const double baseline = placeBaseline(axis.labels, style);
  for (const TimeLabel& label : axis.labels) {
    addLabel(label.text, {label.centre - widthOf(label.text) / 2, baseline}, metrics);
  }
  for (const int percent : {0, 50, 100}) {
    const double y = std::round(frame_.y(percent));
    rows_.push_back(y);
    const QString text = valueText(percent);
    const double x = mirrored ? area.left() : area.right() - widthOf(text);
    addLabel(text, {x, y + metrics.capHeight() / 2}, metrics);
  }
  lines_ = linesOf(points_, frame_);
}

// Sets the height of the plot and returns the baseline of the labels below it. Scripts with high or
// deep letters raise the baseline and make the plot a little lower.
double ChartPicture::placeBaseline(const std::vector<TimeLabel>& labels, const Style& style) {
  double ascent = 0;
  double descent = style.px(kBelowBaseline);
  for (const TimeLabel& label : labels) {
    const QRectF ink = inkOf(label.text, style.font(Role::caption2));
    ascent = std::max(ascent, std::ceil(-ink.top()));
    descent = std::max(descent, std::ceil(ink.bottom()));
  }
  const double baseline = area_.bottom() - descent;
  const double bottom = std::min(area_.bottom() - style.px(kBelowPlot),
                                 baseline - ascent - style.px(kBetweenPlotAndLabels));
  frame_.plot.setBottom(std::max(bottom, frame_.plot.top() + 1));
  return baseline;
}

void ChartPicture::addLabel(const QString& text, QPointF start, const QFontMetricsF& metrics) {
  const QRectF box(start.x(), start.y() - metrics.ascent(), metrics.horizontalAdvance(text),
                   metrics.height());
  labels_.push_back({start, box.toAlignedRect(), text});
}

ChartPicture::Extent ChartPicture::extent(double left, double right) const {
  std::optional<Extent> result;
  for (const ChartPoint& point : points_) {
    const QPointF at = frame_.at(point);
    if (at.x() < left || at.x() > right) continue;
    if (!result) result = {at.y(), at.y()};
    result = {std::min(result->top, at.y()), std::max(result->bottom, at.y())};
  }
  const double middle = frame_.plot.center().y();
  return result.value_or(Extent{middle, middle});
}

void ChartPicture::paint(QPainter& painter, const Style& style, const QRegion& dirty) const {
  paintGrid(painter, style);
  painter.setPen(style.colours().secondary);
  painter.setFont(style.font(Role::caption2));
  for (const Label& label : labels_) {
    if (!dirty.intersects(label.box)) continue;
    painter.setLayoutDirection(label.text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(QPointF(label.start.x(), onDevicePixel(painter, label.start.y())), label.text);
  }
  paintLines(painter, style, dirty);
}

void ChartPicture::paintGrid(QPainter& painter, const Style& style) const {
  const QRectF& plot = frame_.plot;
  const PixelGrid grid(painter, style.px(1));
  for (const double y : rows_) {
    painter.fillRect(grid.row(y, plot.left(), plot.right()), style.colours().hairline);
  }
  for (const double x : columns_) {
    // At most the last pixel of the widget.
    const double inside = std::min(x, area_.right() - style.px(1) / 2.0);
    painter.fillRect(grid.column(inside, plot.top(), plot.bottom()), style.colours().gridLine);
  }
}

void ChartPicture::paintLines(QPainter& painter, const Style& style, const QRegion& dirty) const {
  const double width = style.px(kLineWidth);
  const double beyond = style.px(kBeyondPlot);
  painter.save();
  painter.setClipRect(frame_.plot.adjusted(-beyond, -beyond, beyond, beyond), Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(style.colours().accent, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (const QPolygonF& line : lines_) {
    const QRectF box = line.boundingRect().adjusted(-width, -width, width, width);
    if (!dirty.intersects(box.toAlignedRect())) continue;
    if (line.size() == 1) {
      painter.drawPoint(line.first());
    } else {
      painter.drawPolyline(line);
    }
  }
  painter.restore();
}

}  // namespace tollbeam
