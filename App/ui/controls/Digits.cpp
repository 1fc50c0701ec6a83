#include "ui/controls/Digits.h"

#include <QFontMetricsF>
#include <algorithm>
#include <functional>

namespace tollbeam {

namespace {

// Most system fonts have figures of one width, and then a text is set as one piece.
double cellOf(const QFontMetricsF& metrics) {
  double widest = 0;
  for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
    widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
  }
  return widest;
}

bool hasOneWidth(const QFontMetricsF& metrics, double cell) {
  constexpr double kSame = 0.01;
  for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
    if (cell - metrics.horizontalAdvance(QChar(digit)) > kSame) return false;
  }
  return true;
}

bool isAsciiDigit(QChar c) { return c >= u'0' && c <= u'9'; }

// Runs of digits and of other text, with the place of each; gives the whole width.
double forEachPiece(const QString& text, const QFontMetricsF& metrics,
                    const std::function<void(double x, const QString& piece)>& visit) {
  const double cell = cellOf(metrics);
  // Text from right to left cannot be put together from its left; it is set as one piece as well.
  if (text.isRightToLeft() || hasOneWidth(metrics, cell)) {
    visit(0, text);
    return metrics.horizontalAdvance(text);
  }
  double x = 0;
  qsizetype from = 0;
  while (from < text.size()) {
    qsizetype to = from + 1;
    if (isAsciiDigit(text[from])) {
      const QString digit(text[from]);
      visit(x + (cell - metrics.horizontalAdvance(digit)) / 2, digit);
      x += cell;
    } else {
      while (to < text.size() && !isAsciiDigit(text[to])) ++to;
      const QString piece = text.mid(from, to - from);
      visit(x, piece);
      x += metrics.horizontalAdvance(piece);
    }
    from = to;
  }
  return x;
}

}  // namespace

double tabularWidth(const QString& text, const QFont& font) {
  return forEachPiece(text, QFontMetricsF(font), [](double, const QString&) {});
}

void paintTabular(QPainter& painter, QPointF start, const QString& text, const QFont& font) {
  painter.setFont(font);
  forEachPiece(text, QFontMetricsF(font), [&](double x, const QString& piece) {
    painter.drawText(start + QPointF(x, 0), piece);
  });
}

QPainterPath tabularOutline(QPointF start, const QString& text, const QFont& font) {
  QPainterPath outline;
  forEachPiece(text, QFontMetricsF(font), [&](double x, const QString& piece) {
    outline.addText(start + QPointF(x, 0), font, piece);
  });
  return outline;
}

}  // namespace tollbeam
