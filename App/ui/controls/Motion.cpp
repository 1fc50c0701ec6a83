#include "ui/controls/Motion.h"

#include <QEvent>

namespace tollbeam {

Motion::Motion(QWidget& widget, const Style& style, int milliseconds)
    : widget_(widget), style_(style) {
  animation_.setEasingCurve(QEasingCurve::OutCubic);
  animation_.setDuration(milliseconds);
  connect(&animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant& now) {
    value_ = now.toDouble();
    widget_.update();
  });
  widget_.installEventFilter(this);
}

void Motion::glideTo(double target) {
  if (!widget_.isVisible() || !style_.animates()) return jumpTo(target);
  if (target == target_) return;
  target_ = target;
  animation_.stop();
  animation_.setStartValue(value_);
  animation_.setEndValue(target);
  animation_.start();
}

void Motion::jumpTo(double target) {
  animation_.stop();
  value_ = target_ = target;
  widget_.update();
}

bool Motion::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &widget_ && event->type() == QEvent::Hide) jumpTo(target_);
  return QObject::eventFilter(watched, event);
}

}  // namespace tollbeam
