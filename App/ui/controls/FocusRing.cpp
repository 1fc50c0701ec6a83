#include "ui/controls/FocusRing.h"

#include <QFocusEvent>
#include <QPainter>
#include <utility>

namespace tollbeam {

namespace {

constexpr double kGap = 2;
constexpr double kWidth = 2;

bool isOfTheKeyboard(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
         reason == Qt::ShortcutFocusReason;
}

}  // namespace

void FocusRing::surround(QWidget& control, const Style& style, double radius,
                         std::function<QRect()> shape) {
  // The control owns its ring until the ring becomes its neighbour.
  new FocusRing(control, control, style, radius, std::move(shape));
}

void FocusRing::surround(QWidget& control, QWidget& outlined, const Style& style, double radius) {
  new FocusRing(control, outlined, style, radius, {});
}

FocusRing::FocusRing(QWidget& control, QWidget& outlined, const Style& style, double radius,
                     std::function<QRect()> shape)
    : QWidget(&control),
      control_(control),
      outlined_(outlined),
      style_(style),
      radius_(radius),
      shape_(std::move(shape)) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
  connect(&control, &QObject::destroyed, this, &QObject::deleteLater);
  connect(&style, &Style::changed, this, &FocusRing::follow);
  control.installEventFilter(this);
}

void FocusRing::appear() {
  // Outside the control's own rectangle only its parent can show it.
  if (outlined_.isWindow()) return;
  if (parentWidget() != outlined_.parentWidget()) setParent(outlined_.parentWidget());
  follow();
  raise();
  show();
}

void FocusRing::follow() {
  if (parentWidget() != outlined_.parentWidget()) return;
  const QRect shape = shape_ ? shape_() : outlined_.rect();
  const int reach = style_.px(kGap + kWidth);
  setGeometry(shape.translated(outlined_.pos()).adjusted(-reach, -reach, reach, reach));
  update();
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &control_) return QWidget::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::FocusIn:
      if (isOfTheKeyboard(static_cast<QFocusEvent*>(event)->reason())) appear();
      break;
    case QEvent::KeyPress:
      if (control_.hasFocus()) appear();
      break;
    case QEvent::FocusOut:
      // A menu of the control's own, and a window that comes back, leave the ring where it was.
      if (static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason &&
          static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason) {
        hide();
      }
      break;
    case QEvent::MouseButtonPress:
    case QEvent::Hide:
      hide();
      break;
    case QEvent::Move:
    case QEvent::Resize:
      follow();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double width = style_.px(kWidth);
  painter.setPen(QPen(style_.colours().accent, width));
  const double radius = style_.px(radius_) + style_.px(kGap) + width / 2;
  const QRectF middle = QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2);
  painter.drawRoundedRect(middle, radius, radius);
}

}  // namespace tollbeam
