#include "ui/controls/Text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "ui/controls/Digits.h"
#include "ui/controls/Fill.h"

namespace tollbeam {

Text::Text(const Style& style, Role role, Ink ink, QWidget* parent)
    : QLabel(parent), style_(style), role_(role), ink_(ink) {
  setTextFormat(Qt::PlainText);
  connect(&style_, &Style::changed, this, &Text::restyle);
  restyle();
}

void Text::restyle() {
  setFont(style_.font(role_));
  updateGeometry();
  update();
}

void Text::setInk(Ink ink) {
  if (ink == ink_) return;
  ink_ = ink;
  update();
}

void Text::setBreaks(Breaks breaks) {
  breaks_ = breaks;
  QSizePolicy policy(breaks == Breaks::never ? QSizePolicy::Preferred : QSizePolicy::Expanding,
                     QSizePolicy::Minimum);
  policy.setHeightForWidth(breaks != Breaks::never);
  setSizePolicy(policy);
  updateGeometry();
}

void Text::setTabularDigits() {
  tabular_ = true;
  updateGeometry();
}

double Text::widthOf(const QString& line) const {
  return tabular_ ? tabularWidth(line, font()) : QFontMetricsF(font()).horizontalAdvance(line);
}

QStringList Text::linesAt(int width) const {
  return brokenLines(text(), width, breaks_, [this](const QString& line) { return widthOf(line); });
}

QSize Text::sizeHint() const {
  return {static_cast<int>(std::ceil(widthOf(text()))), style_.lineHeight(role_)};
}

QSize Text::minimumSizeHint() const {
  if (breaks_ == Breaks::never) return sizeHint();
  return {0, style_.lineHeight(role_)};
}

bool Text::hasHeightForWidth() const { return breaks_ != Breaks::never; }

int Text::heightForWidth(int width) const {
  const auto lines = std::max<qsizetype>(linesAt(width).size(), 1);
  return static_cast<int>(lines) * style_.lineHeight(role_);
}

void Text::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
  painter.setPen(style_.colours().ink(ink_));
  painter.setFont(font());
  const int lineHeight = style_.lineHeight(role_);
  const QStringList lines = linesAt(width());
  const QFontMetricsF metrics(font());
  const auto where = QStyle::visualAlignment(layoutDirection(), alignment());
  double top = 0;
  const double free = height() - static_cast<double>(lines.size()) * lineHeight;
  if (where & Qt::AlignVCenter) top = std::floor(free / 2);
  for (const QString& line : lines) {
    const double lineWidth = widthOf(line);
    double x = 0;
    if (where & Qt::AlignHCenter) x = (width() - lineWidth) / 2;
    if (where & Qt::AlignRight) x = width() - lineWidth;
    const double baseline = std::round(
        top + (lineHeight - metrics.ascent() - metrics.descent()) / 2 + metrics.ascent());
    painter.setLayoutDirection(line.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    if (tabular_) {
      paintTabular(painter, {x, baseline}, line, font());
    } else {
      painter.drawText(QPointF(x, baseline), line);
    }
    top += lineHeight;
  }
}

}  // namespace tollbeam
