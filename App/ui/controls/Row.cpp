#include "ui/controls/Row.h"

#include <QPainter>
#include <cmath>

#include "ui/controls/FollowStyle.h"
#include "ui/controls/LineBreaks.h"

namespace tollbeam {

namespace {

constexpr double kGap = 12;

}  // namespace

Row::Row(const Style& style, QWidget* parent) : QLabel(parent), style_(style) {
  setTextFormat(Qt::PlainText);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  followStyle(*this, style, Role::callout);
}

void Row::setReading(const QString& label, const QString& value, Ink color) {
  if (color != color_) update();
  color_ = color;
  label_ = label;
  value_ = value;
  setText(tr("%1: %2").arg(label, value));
}

double Row::widthOf(const QString& text) const {
  return widthOfLine(text, font(), Figures::tabular);
}

double Row::widthOfBoth() const { return widthOf(label_) + style_.px(kGap) + widthOf(value_); }

QStringList Row::broken(const QString& text, int width) const {
  return brokenLines(text, width, Breaks::words, font(), Figures::tabular);
}

QSize Row::sizeHint() const {
  return {static_cast<int>(std::ceil(widthOfBoth())), style_.lineHeight(Role::callout)};
}

QSize Row::minimumSizeHint() const { return {0, style_.lineHeight(Role::callout)}; }

int Row::heightForWidth(int width) const {
  const int line = style_.lineHeight(Role::callout);
  if (widthOfBoth() <= width) return line;
  return static_cast<int>(broken(label_, width).size() + broken(value_, width).size()) * line;
}

void Row::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const int lineHeight = style_.lineHeight(Role::callout);
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  double top = 0;
  const auto paint = [&](const QStringList& lines, Ink ink, bool atTheEnd) {
    painter.setPen(style_.colours().ink(ink));
    for (const QString& line : lines) {
      const double x = atTheEnd != mirrored ? width() - widthOf(line) : 0;
      paintLine(painter, {x, top}, lineHeight, line, font(), Figures::tabular);
      top += lineHeight;
    }
  };
  if (widthOfBoth() <= width()) {
    paint({label_}, Ink::primary, false);
    top = 0;
    paint({value_}, color_, true);
  } else {
    paint(broken(label_, width()), Ink::primary, false);
    paint(broken(value_, width()), color_, true);
  }
}

}  // namespace tollbeam
