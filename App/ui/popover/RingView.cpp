#include "ui/popover/RingView.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/controls/Accessibility.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {

namespace {

// Measures of the drawing at scale 1.
constexpr double kSide = 104;
constexpr double kRadius = 46;
constexpr double kPen = 11;
constexpr double kBaseline = 62;
// The ring leaves 78 at the height of the digits.
constexpr double kRoomForText = 74;
// The stroke around the digits rounds their corners and gives them the weight of a semibold. A
// family without a medium weight needs a thicker one.
constexpr double kStroke = 0.9;
constexpr double kStrokeOfRegular = 1.5;

constexpr int kMilliseconds = 250;

}  // namespace

RingView::RingView(const Style& style, QWidget* parent)
    : QProgressBar(parent), style_(style), filled_(*this, style, kMilliseconds) {
  setRange(0, 100);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  style_.follow(this, [this] {
    updateGeometry();
    update();
  });
  setCharge(0, color_);
}

void RingView::setCharge(int percent, Tint color) {
  if (color != color_) update();
  color_ = color;
  setAccessibleNameIfOther(*this, tr("Charge, %1%").arg(percent));
  setValue(percent);
  filled_.glideTo(percent);
}

QSize RingView::sizeHint() const { return {style_.px(kSide), style_.px(kSide)}; }

void RingView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(width() / kSide, height() / kSide);
  const QRectF circle(kSide / 2 - kRadius, kSide / 2 - kRadius, 2 * kRadius, 2 * kRadius);
  const Colours& colours = style_.colours();
  painter.setPen(QPen(colours.track, kPen, Qt::SolidLine, Qt::FlatCap));
  painter.drawEllipse(circle);
  const double part = std::clamp(filled_.value() / 100, 0.0, 1.0);
  if (part > 0) {
    constexpr int kTop = 90 * 16;
    constexpr double kWholeTurn = 360 * 16;
    painter.setPen(QPen(colours.graphics(color_), kPen, Qt::SolidLine, Qt::RoundCap));
    if (part < 1) {
      painter.drawArc(circle, kTop, static_cast<int>(std::lround(-part * kWholeTurn)));
    } else {
      painter.drawEllipse(circle);
    }
  }
  paintPercent(painter);
}

void RingView::paintPercent(QPainter& painter) const {
  const QFont font = style_.ringFont();
  const QString text = QStringLiteral("%1%").arg(value());
  const double stroke = (hasMedium(font) ? kStroke : kStrokeOfRegular) * style_.scale();
  // Tabular digits keep their place while the number changes; "100%" needs none.
  const bool isFull = value() >= 100;
  QPainterPath outline;
  if (isFull) {
    outline.addText({0, 0}, font, text);
  } else {
    outline = tabularOutline({0, 0}, text, font);
  }
  const QRectF ink = outline.boundingRect();
  const double middle = isFull ? ink.center().x() : tabularWidth(text, font) / 2;
  // The font has already scaled the outline, and the painter would again.
  const double scale = 1 / style_.scale();
  const double fit = std::min(1.0, kRoomForText / ((ink.width() + stroke) * scale));
  painter.translate(kSide / 2, kBaseline);
  painter.scale(fit * scale, fit * scale);
  painter.translate(-middle, 0);
  painter.setPen(QPen(style_.colours().primary, stroke, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
  painter.setBrush(style_.colours().primary);
  painter.drawPath(outline);
}

}  // namespace tollbeam
