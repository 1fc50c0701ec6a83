#include "ui/controls/LinkButton.h"

#include <QPainter>
#include <cmath>

#include "ui/controls/FocusRing.h"
#include "ui/controls/FollowStyle.h"
#include "ui/controls/ReturnKey.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {

namespace {

constexpr double kReach = 5;
constexpr double kRadius = 2;
constexpr double kPressedOpacity = 0.7;

}  // namespace

LinkButton::LinkButton(const Style& style, const QString& text, QWidget* parent)
    : QPushButton(text, parent), style_(style) {
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  new FocusRing(*this, style, kRadius,
                [this] { return rect().adjusted(reach(), reach(), -reach(), -reach()); });
  followStyle(*this, style, Role::captionMedium);
}

int LinkButton::reach() const { return style_.px(kReach); }

QSize LinkButton::sizeHint() const {
  const double words = widthOfLine(text(), font());
  return QSize(static_cast<int>(std::ceil(words)), style_.lineHeight(Role::captionMedium)) +
         2 * QSize(reach(), reach());
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
  if (!pressByReturn(*this, *event)) QPushButton::keyPressEvent(event);
}

void LinkButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (isDown()) painter.setOpacity(kPressedOpacity);
  painter.setPen(style_.colours().link);
  QFont underlined(font());
  underlined.setUnderline(underMouse());
  paintLine(painter, QPointF(reach(), reach()), height() - 2 * reach(), text(), underlined);
}

}  // namespace tollbeam
