#include "ui/controls/TextLine.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "ui/controls/Digits.h"

namespace tollbeam {

double widthOfLine(const QString& text, const QFont& font, Figures figures) {
  return figures == Figures::tabular ? tabularWidth(text, font)
                                     : QFontMetricsF(font).horizontalAdvance(text);
}

double onDevicePixel(const QPainter& painter, double y) {
  const double ratio = painter.device()->devicePixelRatioF();
  return std::round(y * ratio) / ratio;
}

void paintLine(QPainter& painter, QPointF topLeft, double height, const QString& text,
               const QFont& font, Figures figures) {
  const QFontMetricsF metrics(font);
  const double above = (height - metrics.ascent() - metrics.descent()) / 2;
  // The descent would do, but is deeper than the letters, and would lift lines that have room.
  QPainterPath letters;
  letters.addText(0, 0, font, QStringLiteral("gjpqy"));
  const double depth = letters.boundingRect().bottom();
  const double lowest = topLeft.y() + height - depth;
  const double ratio = painter.device()->devicePixelRatioF();
  const double baseline = std::min(onDevicePixel(painter, topLeft.y() + above + metrics.ascent()),
                                   std::floor(lowest * ratio) / ratio);
  const QPointF start(topLeft.x(), baseline);
  painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  if (figures == Figures::tabular) {
    paintTabular(painter, start, text, font);
  } else {
    painter.setFont(font);
    painter.drawText(start, text);
  }
}

void paintAtLead(QPainter& painter, const QRect& box, int inset, const QString& text,
                 const QFont& font, Qt::LayoutDirection direction) {
  const double x = direction == Qt::RightToLeft
                       ? box.right() + 1 - inset - widthOfLine(text, font, Figures::proportional)
                       : box.left() + inset;
  paintLine(painter, {x, box.top() * 1.0}, box.height(), text, font, Figures::proportional);
}

}  // namespace tollbeam
