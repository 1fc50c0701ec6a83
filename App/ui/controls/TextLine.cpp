#include "ui/controls/TextLine.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <functional>

namespace tollbeam {

namespace {

bool isAsciiDigit(QChar c) { return c >= u'0' && c <= u'9'; }

// Calls `visit` for each digit and each run of other text with its place; returns the whole width.
double forEachPiece(const QString& text, const QFontMetricsF& metrics,
                    const std::function<void(double x, const QString& piece)>& visit) {
  constexpr double kSame = 0.01;
  double cell = 0;
  double narrowest = metrics.horizontalAdvance(u'0');
  for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
    cell = std::max(cell, metrics.horizontalAdvance(QChar(digit)));
    narrowest = std::min(narrowest, metrics.horizontalAdvance(QChar(digit)));
  }
  // Most system fonts have figures of one width, and a text from right to left cannot be put
  // together from its left: both are set as one piece.
  if (text.isRightToLeft() || cell - narrowest <= kSame) {
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

double widthOfLine(const QString& text, const QFont& font, Figures figures) {
  return figures == Figures::tabular ? tabularWidth(text, font)
                                     : QFontMetricsF(font).horizontalAdvance(text);
}

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

double onDevicePixel(const QPainter& painter, double y) {
  const double ratio = painter.device()->devicePixelRatioF();
  return std::round(y * ratio) / ratio;
}

void paintLine(QPainter& painter, QPointF topLeft, double height, const QString& text,
               const QFont& font, Figures figures) {
  const QFontMetricsF metrics(font);
  const double above = (height - metrics.ascent() - metrics.descent()) / 2;
  // Not the descent: it is deeper than the letters, and would lift lines that have room.
  QPainterPath letters;
  letters.addText(0, 0, font, QStringLiteral("gjpqy"));
  const double lowest = topLeft.y() + height - letters.boundingRect().bottom();
  const double ratio = painter.device()->devicePixelRatioF();
  const double baseline = std::min(onDevicePixel(painter, topLeft.y() + above + metrics.ascent()),
                                   std::floor(lowest * ratio) / ratio);
  const QPointF start(topLeft.x(), baseline);
  painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  if (figures == Figures::tabular) return paintTabular(painter, start, text, font);
  painter.setFont(font);
  painter.drawText(start, text);
}

void paintAtLead(QPainter& painter, const QRect& box, int inset, const QString& text,
                 const QFont& font, Qt::LayoutDirection direction) {
  const double x = direction == Qt::RightToLeft ? box.right() + 1 - inset - widthOfLine(text, font)
                                                : box.left() + inset;
  paintLine(painter, {x, box.top() * 1.0}, box.height(), text, font);
}

}  // namespace tollbeam
