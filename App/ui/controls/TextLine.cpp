#include "ui/controls/TextLine.h"

#include <QFontMetricsF>
#include <cmath>

#include "ui/controls/Digits.h"

namespace tollbeam {

double widthOfLine(const QString& text, const QFont& font, Figures figures) {
  return figures == Figures::tabular ? tabularWidth(text, font)
                                     : QFontMetricsF(font).horizontalAdvance(text);
}

void paintLine(QPainter& painter, QPointF topLeft, double height, const QString& text,
               const QFont& font, Figures figures) {
  const QFontMetricsF metrics(font);
  const double above = (height - metrics.ascent() - metrics.descent()) / 2;
  const QPointF start(topLeft.x(), std::round(topLeft.y() + above + metrics.ascent()));
  painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  if (figures == Figures::tabular) {
    paintTabular(painter, start, text, font);
  } else {
    painter.setFont(font);
    painter.drawText(start, text);
  }
}

}  // namespace tollbeam
