#include "ui/chart/ChartMarker.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/controls/PixelGrid.h"

namespace tollbeam {

namespace {

constexpr double kDotRadius = 3;
constexpr double kDotEdge = 1.5;
constexpr double kPadding = 6;
constexpr double kBetween = 6;
constexpr double kHigher = 4;  // than the line of text in it
constexpr double kFromPlot = 4;
constexpr double kFromLine = 5;
constexpr double kRadius = 5;
constexpr double kLineOpacity = 0.5;

}  // namespace

ChartMarker::ChartMarker(const ChartPicture& picture, std::size_t point, QString time,
                         QString percent, const Style& style, Qt::LayoutDirection direction)
    : at_(picture.frame().at(picture.points()[point])),
      plot_(picture.frame().plot),
      time_(std::move(time)),
      percent_(std::move(percent)) {
  const QFontMetricsF metrics(style.font(Role::caption2));
  const double timeWidth = std::ceil(metrics.horizontalAdvance(time_));
  const double percentWidth = std::ceil(metrics.horizontalAdvance(percent_));
  const double padding = style.px(kPadding);
  const double between = style.px(kBetween);
  const double width = timeWidth + percentWidth + between + 2 * padding;
  const double height = style.lineHeight(Role::caption2) + style.px(kHigher);

  const double rightmost = std::max(plot_.right() - width, plot_.left());
  const double left = std::round(std::clamp(at_.x() - width / 2, plot_.left(), rightmost));
  const double free = style.px(kFromLine);
  const double top = std::round(plot_.top() + style.px(kFromPlot));
  const double bottom = std::round(plot_.bottom() - style.px(kFromPlot) - height);
  const auto line = picture.extent(left - free, left + width + free);
  const bool isFreeAbove = line.top > top + height + free;
  const bool isFreeBelow = line.bottom < bottom - free;
  // Where the label must cover the chart's line, it does not cover the marked point.
  const bool below = isFreeAbove ? false : isFreeBelow ? true : at_.y() < plot_.center().y();
  label_ = QRectF(left, below ? bottom : top, width, height);
  const bool mirrored = direction == Qt::RightToLeft;
  timeStart_ = left + padding + (mirrored ? percentWidth + between : 0);
  percentStart_ = left + padding + (mirrored ? 0 : timeWidth + between);

  const double radius = style.px(kDotRadius);
  dot_ = QRectF(at_, at_).adjusted(-radius, -radius, radius, radius);
  // One more pixel on each side for antialiasing.
  const double thickness = style.px(1) + 1;
  const double edge = kDotEdge * style.scale() + 1;
  region_ = QRectF(at_.x() - thickness, plot_.top() - 1, 2 * thickness, plot_.height() + 2)
                .toAlignedRect();
  region_ += dot_.adjusted(-edge, -edge, edge, edge).toAlignedRect();
  region_ += label_.toAlignedRect().adjusted(-1, -1, 1, 1);
}

void ChartMarker::paint(QPainter& painter, const Style& style) const {
  const Colours& colours = style.colours();
  QColor line = colours.secondary;
  line.setAlphaF(colours.highContrast ? 1 : static_cast<float>(kLineOpacity));
  const PixelGrid grid(painter, style.px(1));
  painter.fillRect(grid.column(at_.x(), plot_.top(), plot_.bottom()), line);

  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const double edge = kDotEdge * style.scale();
  painter.setBrush(colours.surface);
  painter.drawEllipse(dot_.adjusted(-edge, -edge, edge, edge));
  painter.setBrush(colours.accent);
  painter.drawEllipse(dot_);

  const double radius = style.px(kRadius);
  painter.setBrush(colours.card);
  painter.setPen(QPen(colours.hairline, style.px(1)));
  const double half = style.px(1) / 2.0;
  painter.drawRoundedRect(label_.adjusted(half, half, -half, -half), radius, radius);
  painter.restore();

  const QFontMetricsF metrics(style.font(Role::caption2));
  const double baseline =
      std::round(label_.top() + (label_.height() - metrics.ascent() - metrics.descent()) / 2 +
                 metrics.ascent());
  painter.setFont(style.font(Role::caption2));
  painter.setPen(colours.secondary);
  painter.setLayoutDirection(time_.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(QPointF(timeStart_, baseline), time_);
  painter.setPen(colours.primary);
  painter.setLayoutDirection(Qt::LeftToRight);
  painter.drawText(QPointF(percentStart_, baseline), percent_);
}

}  // namespace tollbeam
