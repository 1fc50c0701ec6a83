#include "ui/controls/Stepper.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "ui/controls/Accessibility.h"
#include "ui/controls/Fill.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/FollowStyle.h"
#include "ui/controls/PixelGrid.h"

namespace tollbeam {

namespace {

constexpr QSize kSize(64, 26);
constexpr double kRadius = 7;
constexpr double kSign = 10;
constexpr double kThickness = 1.5;
constexpr int kDivider = 14;
constexpr double kEndOpacity = 0.35;
// After the last turn of the wheel, which has no release.
constexpr std::chrono::milliseconds kSettling(700);

}  // namespace

std::optional<std::int64_t> stepped(std::int64_t value, Step step, Range range) {
  if (step == Step::up) {
    if (value >= range.most) return std::nullopt;
    return std::max(value + 1, range.least);
  }
  if (value <= range.least) return std::nullopt;
  return std::min(value - 1, range.most);
}

Stepper::Stepper(const Style& style, Range range, QWidget* parent)
    : QAbstractButton(parent), style_(style), range_(range), value_(range.least) {
  setAccessibleNumber(*this,
                      {.least = range.least,
                       .most = range.most,
                       .value = [this] { return value_; },
                       .text = [this] { return QString::number(value_); },
                       .set =
                           [this](std::int64_t value) {
                             if (value == value_) return;
                             Q_EMIT wanted(value);
                             Q_EMIT settled();
                           },
                       .step = [this](int step) { take(step > 0 ? Step::up : Step::down); }});
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAutoRepeat(true);
  setAutoRepeatDelay(this->style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatThreshold));
  setAutoRepeatInterval(this->style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatRate));
  settling_.setSingleShot(true);
  settling_.setInterval(kSettling);
  connect(&settling_, &QTimer::timeout, this, &Stepper::settled);
  connect(this, &QAbstractButton::pressed, this, [this] {
    if (pressed_) ask(*pressed_);
  });
  connect(this, &QAbstractButton::released, this, [this] {
    // Qt also emits it between the repetitions.
    if (!isDown()) settle();
  });
  new FocusRing(*this, style, kRadius);
  fixSize(*this, style, kSize);
}

void Stepper::setValue(std::int64_t value) {
  if (value == value_) return;
  value_ = value;
  update();
  QAccessibleValueChangeEvent event(this, QVariant::fromValue<qlonglong>(value));
  QAccessible::updateAccessibility(&event);
}

bool Stepper::take(Step step) {
  const bool asked = ask(step);
  settle();
  return asked;
}

bool Stepper::ask(Step step) {
  const auto next = isEnabled() ? stepped(value_, step, range_) : std::nullopt;
  if (!next) return false;
  settling_.start();
  Q_EMIT wanted(*next);
  return true;
}

void Stepper::settle() {
  if (!settling_.isActive()) return;
  settling_.stop();
  Q_EMIT settled();
}

QRect Stepper::cell(Step step) const {
  const QRect leading(0, 0, width() / 2, height());
  const bool isLeft = (step == Step::down) == (layoutDirection() == Qt::LeftToRight);
  return isLeft ? leading : leading.translated(width() - leading.width(), 0);
}

std::optional<Step> Stepper::cellAt(QPoint position) const {
  for (const Step step : {Step::down, Step::up}) {
    if (cell(step).contains(position)) return step;
  }
  return std::nullopt;
}

void Stepper::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!isEnabled()) painter.setOpacity(kDisabledOpacity);
  paintCell(painter, Step::down);
  paintCell(painter, Step::up);
  const int line = style_.px(1);
  QColor divider = style_.colours().primary;
  divider.setAlphaF(0.16F);
  painter.fillRect((width() - line) / 2, (height() - style_.px(kDivider)) / 2, line,
                   style_.px(kDivider),
                   style_.colours().highContrast ? style_.colours().primary : divider);
}

void Stepper::paintCell(QPainter& painter, Step step) const {
  const bool canStep = stepped(value_, step, range_).has_value();
  painter.save();
  // The whole shape, clipped to the cell: the corners are the shape's.
  painter.setClipRect(cell(step));
  paintFill(painter, rect(), style_.px(kRadius), style_.colours(),
            {isEnabled() && canStep, hovered_ == step, isDown() && pressed_ == step});
  painter.restore();

  painter.save();
  if (!canStep) painter.setOpacity(painter.opacity() * kEndOpacity);
  paintSign(painter, QRectF(cell(step)).center(), step);
  painter.restore();
}

// On whole pixels of the device, and its crossing painted only once: it may be translucent.
void Stepper::paintSign(QPainter& painter, QPointF centre, Step step) const {
  const double ratio = painter.device()->devicePixelRatioF();
  const double thickness = std::round(kThickness * style_.scale() * ratio) / ratio;
  const double arm = std::round((style_.px(kSign) - thickness) / 2 * ratio) / ratio;
  const double length = 2 * arm + thickness;
  const PixelGrid grid(painter, thickness);
  const QRectF upright = grid.column(centre.x(), centre.y() - length / 2, centre.y() + length / 2);
  const QRectF across = grid.row(upright.center().y(), upright.left() - arm, upright.right() + arm);
  const QColor colour = style_.colours().primary;
  painter.fillRect(across, colour);
  if (step == Step::down) return;
  painter.fillRect(QRectF(upright.topLeft(), QPointF(upright.right(), across.top())), colour);
  painter.fillRect(QRectF(QPointF(upright.left(), across.bottom()), upright.bottomRight()), colour);
}

bool Stepper::hitButton(const QPoint& position) const {
  return pressed_ && cellAt(position) == pressed_;
}

void Stepper::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    pressed_ = hovered_ = cellAt(event->position().toPoint());
  }
  QAbstractButton::mousePressEvent(event);
}

void Stepper::mouseMoveEvent(QMouseEvent* event) {
  hovered_ = cellAt(event->position().toPoint());
  update();
  QAbstractButton::mouseMoveEvent(event);
}

bool Stepper::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::Leave:
      hovered_.reset();
      update();
      break;
    case QEvent::Hide:
    case QEvent::EnabledChange:
    case QEvent::FocusOut:
      // Before Qt handles them, which would leave the timer of the repetition running.
      setDown(false);
      settle();
      break;
    case QEvent::Wheel:
      // Qt's disabled buttons keep it from the page.
      if (!isEnabled()) {
        event->ignore();
        return true;
      }
      break;
    default:
      break;
  }
  return QAbstractButton::event(event);
}

void Stepper::keyPressEvent(QKeyEvent* event) {
  const bool mirrored = layoutDirection() == Qt::RightToLeft;
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      ask(Step::up);
      break;
    case Qt::Key_Down:
    case Qt::Key_Minus:
      ask(Step::down);
      break;
    case Qt::Key_Right:
      ask(mirrored ? Step::down : Step::up);
      break;
    case Qt::Key_Left:
      ask(mirrored ? Step::up : Step::down);
      break;
    default:
      // Space does not press it.
      event->ignore();
  }
}

void Stepper::keyReleaseEvent(QKeyEvent* event) {
  // A held key is released and pressed again and again.
  if (!event->isAutoRepeat()) settle();
  event->ignore();
}

void Stepper::wheelEvent(QWheelEvent* event) {
  // Without the focus, the wheel scrolls the page.
  if (!hasFocus()) return event->ignore();
  constexpr int kNotch = QWheelEvent::DefaultDeltasPerStep;
  wheel_ += event->angleDelta().y();
  for (; wheel_ >= kNotch; wheel_ -= kNotch) ask(Step::up);
  for (; wheel_ <= -kNotch; wheel_ += kNotch) ask(Step::down);
}

}  // namespace tollbeam
