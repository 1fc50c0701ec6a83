#include "ui/controls/ScrollPage.h"

#include <QWheelEvent>
#include <algorithm>

namespace tollbeam {

namespace {

// Between two turns of the wheel that belong to one scroll, in milliseconds.
constexpr qint64 kSameScroll = 500;
// How much of the page is shown around the control with the focus, at scale 1.
constexpr int kAround = 64;

}  // namespace

ScrollPage::ScrollPage(const Style& style, QWidget* page, QWidget* parent)
    : ScrollArea(style, parent), style_(style) {
  setWidgetResizable(true);
  setPage(page);
}

void ScrollPage::keepWheelFrom(QWidget* control) { control->installEventFilter(this); }

bool ScrollPage::eventFilter(QObject* watched, QEvent* event) {
  const bool scrolling = scrolled_.isValid() && scrolled_.elapsed() < kSameScroll;
  const auto* control = qobject_cast<QWidget*>(watched);
  if (event->type() == QEvent::Wheel && scrolling && widget()->isAncestorOf(control)) {
    // Qt offers the event to the control's parent next.
    event->ignore();
    return true;
  }
  return ScrollArea::eventFilter(watched, event);
}

bool ScrollPage::focusNextPrevChild(bool next) {
  // The scroll area's own would show less around the control, and count it as shown.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  const bool moved = QWidget::focusNextPrevChild(next);
  const QWidget* control = widget()->focusWidget();
  if (!moved || !control || !control->hasFocus()) return moved;
  const int around = style_.px(kAround);
  const int top = control->mapTo(widget(), QPoint()).y() - around;
  const int bottom = top + control->height() - 1 + 2 * around;
  QScrollBar* bar = verticalScrollBar();
  bar->setValue(std::min(std::max(bar->value(), bottom - viewport()->height()), top));
  return moved;
}

void ScrollPage::wheelEvent(QWheelEvent* event) {
  scrolled_.start();
  ScrollArea::wheelEvent(event);
}

}  // namespace tollbeam
