#include "ui/controls/ScrollPage.h"

#include <QWheelEvent>
#include <algorithm>

namespace tollbeam {

namespace {

// Between two turns of the wheel that belong together.
constexpr qint64 kSameScroll = 500;
// So much of the page around the control with the focus is shown with it.
constexpr int kAround = 64;

}  // namespace

ScrollPage::ScrollPage(const Style& style, QWidget* page, QWidget* parent)
    : ScrollArea(style, parent), style_(style) {
  setWidgetResizable(true);
  setPage(page);
}

void ScrollPage::keepWheelFrom(QWidget* control) {
  kept_.push_back(control);
  control->installEventFilter(this);
}

bool ScrollPage::eventFilter(QObject* watched, QEvent* event) {
  const bool scrolling = scrolled_.isValid() && scrolled_.elapsed() < kSameScroll;
  if (event->type() == QEvent::Wheel && scrolling &&
      std::find(kept_.begin(), kept_.end(), watched) != kept_.end()) {
    // Not the control's: the next to be asked is what it lies on.
    event->ignore();
    return true;
  }
  return ScrollArea::eventFilter(watched, event);
}

bool ScrollPage::focusNextPrevChild(bool next) {
  // The scroll area's own would show less around the control, and count it as shown.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  const bool moved = QWidget::focusNextPrevChild(next);
  QWidget* control = widget()->focusWidget();
  if (moved && control && control->hasFocus()) {
    bringIntoView(QRect(control->mapTo(widget(), QPoint()), control->size()));
  }
  return moved;
}

void ScrollPage::bringIntoView(const QRect& part) {
  const int around = style_.px(kAround);
  QScrollBar* bar = verticalScrollBar();
  const int lowest = part.bottom() + around - viewport()->height();
  bar->setValue(std::min(std::max(bar->value(), lowest), part.top() - around));
}

void ScrollPage::wheelEvent(QWheelEvent* event) {
  scrolled_.start();
  ScrollArea::wheelEvent(event);
}

}  // namespace tollbeam
