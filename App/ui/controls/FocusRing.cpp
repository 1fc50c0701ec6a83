#include "ui/controls/FocusRing.h"

#include <QFocusEvent>
#include <QPainter>
#include <utility>

#include "ui/controls/ControlStyle.h"

namespace tollbeam {

namespace {

constexpr double kGap = 2;
constexpr double kWidth = 2;

bool isFromKeyboard(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
         reason == Qt::ShortcutFocusReason;
}

}  // namespace

// A child of the control until Qt moves it to a widget around the control.
FocusRing::FocusRing(QWidget& control, const Style& style, double radius,
                     std::function<QRect()> shape, QWidget* whole)
    : QFocusFrame(&control),
      control_(control),
      framed_(whole ? *whole : control),
      style_(style),
      radius_(radius),
      shape_(std::move(shape)) {
  setStyle(ControlStyle::of(style));
  hide();
  // Not later: Qt's frame would still follow the destroyed widget.
  connect(&control, &QObject::destroyed, this, [this] { delete this; });
  connect(&style, &Style::changed, this, [this] {
    if (!isVisible()) return;
    disappear();
    appear();
  });
  control.installEventFilter(this);
}

void FocusRing::appear() {
  if (!isVisible()) disappear();
  setWidget(&framed_);
}

void FocusRing::disappear() {
  setWidget(nullptr);
  // Qt has removed the event filter with it.
  control_.installEventFilter(this);
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &control_) return QFocusFrame::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::FocusIn:
      if (isFromKeyboard(static_cast<QFocusEvent*>(event)->reason())) appear();
      break;
    case QEvent::KeyPress:
      if (control_.hasFocus()) appear();
      break;
    case QEvent::FocusOut: {
      // The ring stays while the control's own list is open and while another window is active.
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) disappear();
      break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::Hide:
      disappear();
      break;
    default:
      break;
  }
  return QFocusFrame::eventFilter(watched, event);
}

void FocusRing::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double width = style_.px(kWidth);
  const double away = style_.px(kGap) + width / 2;
  const QRectF shape = shape_ ? shape_() : framed_.rect();
  const QPointF inFrame = framed_.mapTo(parentWidget(), QPoint()) - pos();
  painter.setPen(QPen(style_.colours().accent, width));
  const double radius = style_.px(radius_) + away;
  painter.drawRoundedRect(shape.translated(inFrame).adjusted(-away, -away, away, away), radius,
                          radius);
}

}  // namespace tollbeam
