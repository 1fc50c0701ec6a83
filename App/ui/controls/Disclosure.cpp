#include "ui/controls/Disclosure.h"

#include <QPainter>
#include <QStyle>
#include <cmath>

#include "ui/controls/Accessibility.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/FollowStyle.h"
#include "ui/controls/ReturnKey.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {

namespace {

constexpr int kTurnMilliseconds = 120;
constexpr int kTriangle = 10;
constexpr int kGap = 6;
constexpr double kRadius = 5;
// Open, the triangle sinks a little, to stand on the line of the words.
constexpr double kSink = 1;

}  // namespace

Disclosure::Disclosure(const Style& style, const QString& text, QWidget* parent)
    : QAbstractButton(parent), style_(style), turn_(*this, style, kTurnMilliseconds) {
  setAccessibleButton(*this, QAccessible::Button, [this](QAccessible::State& state) {
    state.expandable = true;
    state.expanded = isChecked();
    state.collapsed = !isChecked();
    // Some screen readers know only "checked" and not "expanded", so it has both.
    state.checkable = true;
    state.checked = isChecked();
    state.pressed = isDown();
  });
  setText(text);
  setCheckable(true);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  new FocusRing(*this, style, kRadius, [this] {
    const int beside = style_.px(kReach);
    const QRect words(-beside, 0, textWidth() + 2 * beside, height());
    return QStyle::visualRect(layoutDirection(), rect(), words);
  });
  connect(this, &Disclosure::toggled, this, &Disclosure::onToggled);
  followStyle(*this, style, Role::callout);
}

void Disclosure::onToggled(bool open) {
  turn_.glideTo(open ? 1 : 0);
  QAccessible::State changed;
  changed.expanded = true;
  changed.collapsed = true;
  QAccessibleStateChangeEvent event(this, changed);
  QAccessible::updateAccessibility(&event);
}

int Disclosure::textWidth() const {
  return style_.px(kTriangle) + style_.px(kGap) +
         static_cast<int>(std::ceil(widthOfLine(text(), font())));
}

QSize Disclosure::sizeHint() const {
  return {textWidth(), style_.lineHeight(Role::callout) + 2 * style_.px(kReach)};
}

void Disclosure::keyPressEvent(QKeyEvent* event) {
  if (!pressByReturn(*this, *event)) QAbstractButton::keyPressEvent(event);
}

void Disclosure::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Colours& colours = style_.colours();
  const int size = style_.px(kTriangle);
  const QRect box =
      QStyle::visualRect(layoutDirection(), rect(), QRect(0, (height() - size) / 2, size, size));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(underMouse() || isDown() ? colours.primary : colours.secondary);
  painter.translate(QRectF(box).center());
  const double scale = size / static_cast<double>(kTriangle);
  painter.scale(isRightToLeft() ? -scale : scale, scale);
  painter.translate(0, kSink * turn_.value());
  constexpr double kQuarter = 90;
  painter.rotate(kQuarter * turn_.value());
  painter.drawConvexPolygon(QPolygonF{{-4, -4.5}, {-4, 4.5}, {2, 0}});
  painter.restore();

  painter.setPen(colours.primary);
  paintAtLead(painter, rect(), size + style_.px(kGap), text(), font(), layoutDirection());
}

}  // namespace tollbeam
