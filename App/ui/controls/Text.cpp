#include "ui/controls/Text.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "ui/controls/Fill.h"
#include "ui/controls/FollowStyle.h"

namespace tollbeam {

Text::Text(const Style& style, Role role, Ink ink, QWidget* parent)
    : QLabel(parent), style_(style), role_(role), ink_(ink) {
  setTextFormat(Qt::PlainText);
  followStyle(*this, style, role);
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
  figures_ = Figures::tabular;
  updateGeometry();
}

double Text::widthOf(const QString& line) const { return widthOfLine(line, font(), figures_); }

double Text::widestWord() const {
  double widest = 0;
  for (const QString& word : text().split(u' ')) widest = std::max(widest, widthOf(word));
  return widest;
}

QStringList Text::linesAt(int width) const {
  return brokenLines(text(), width, breaks_, font(), figures_);
}

QSize Text::sizeHint() const {
  return {static_cast<int>(std::ceil(widthOf(text()))), style_.lineHeight(role_)};
}

QSize Text::minimumSizeHint() const {
  if (breaks_ == Breaks::never) return sizeHint();
  return {0, style_.lineHeight(role_)};
}

int Text::heightForWidth(int width) const {
  const auto lines = std::max<qsizetype>(linesAt(width).size(), 1);
  return static_cast<int>(lines) * style_.lineHeight(role_);
}

void Text::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
  painter.setPen(style_.colours().ink(ink_));
  const int lineHeight = style_.lineHeight(role_);
  const QStringList lines = linesAt(width());
  const auto where = QStyle::visualAlignment(layoutDirection(), alignment());
  double top = 0;
  const double free = height() - static_cast<double>(lines.size()) * lineHeight;
  if (where & Qt::AlignVCenter) top = std::floor(free / 2);
  for (const QString& line : lines) {
    const double spare = width() - widthOf(line);
    double x = 0;
    if (where & Qt::AlignHCenter) x = spare / 2;
    if (where & Qt::AlignRight) x = spare;
    paintLine(painter, {x, top}, lineHeight, line, font(), figures_);
    top += lineHeight;
  }
}

}  // namespace tollbeam
