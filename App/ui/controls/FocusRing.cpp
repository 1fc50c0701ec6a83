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
  new FocusRing(control, style, radius, std::move(shape));
}

FocusRing::FocusRing(QWidget& control, const Style& style, double radius,
                     std::function<QRect()> shape)
    : QWidget(&control),
      control_(control),
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

QRect FocusRing::around() const {
  const int reach = style_.px(kGap + kWidth);
  return (shape_ ? shape_() : control_.rect()).adjusted(-reach, -reach, reach, reach);
}

// Into the first widget that does not cut it off. Those on the way there may move.
void FocusRing::moveIn() {
  for (QWidget* widget : std::as_const(between_)) {
    if (widget) widget->removeEventFilter(this);
  }
  between_.clear();
  QWidget* host = control_.parentWidget();
  while (!host->isWindow() &&
         !host->rect().contains(around().translated(control_.mapTo(host, QPoint())))) {
    host->installEventFilter(this);
    between_ << host;
    host = host->parentWidget();
  }
  if (parentWidget() != host) setParent(host);
}

void FocusRing::appear() {
  // Outside the control's own rectangle only a widget around it can show it.
  if (control_.isWindow()) return;
  moveIn();
  follow();
  raise();
  show();
}

void FocusRing::follow() {
  QWidget* host = parentWidget();
  if (host == &control_ || !host->isAncestorOf(&control_)) return;
  setGeometry(around().translated(control_.mapTo(host, QPoint())));
  update();
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &control_) {
    if (event->type() == QEvent::Move) follow();
    return QWidget::eventFilter(watched, event);
  }
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
