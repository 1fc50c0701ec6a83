#include "ui/controls/Button.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "ui/controls/Fill.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/FollowStyle.h"
#include "ui/controls/ReturnKey.h"

namespace tollbeam {

namespace {

constexpr int kHeight = 28;
constexpr double kRadius = 7;
constexpr int kPadding = 14;

}  // namespace

Button::Button(const Style& style, const QString& text, QWidget* parent, Ink ink)
    : QPushButton(text, parent), style_(style), ink_(ink) {
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
  new FocusRing(*this, style, kRadius);
  followStyle(*this, style, Role::body);
}

QSize Button::sizeHint() const {
  const double text = QFontMetricsF(font()).horizontalAdvance(this->text());
  return {static_cast<int>(std::ceil(text)) + 2 * style_.px(kPadding), style_.px(kHeight)};
}

void Button::keyPressEvent(QKeyEvent* event) {
  if (!pressByReturn(*this, *event)) QPushButton::keyPressEvent(event);
}

void Button::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
  paintFill(painter, rect(), style_.px(kRadius), style_.colours(),
            {isEnabled(), underMouse(), isDown()});
  painter.setPen(style_.colours().ink(ink_));
  painter.setFont(font());
  // In the text's own direction, also inside a mirrored window.
  painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(rect(), Qt::AlignCenter, text());
}

}  // namespace tollbeam
