#include "ui/controls/ScrollArea.h"

#include <QCoreApplication>
#include <QEvent>

#include "ui/controls/ControlStyle.h"

namespace tollbeam {

ScrollArea::ScrollArea(const Style& style, QWidget* parent) : QScrollArea(parent) {
  setStyle(ControlStyle::of(style));
  verticalScrollBar()->setStyle(ControlStyle::of(style));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  connect(&style, &Style::changed, this, [this] {
    // Qt measures the bar anew.
    QEvent changed(QEvent::StyleChange);
    QCoreApplication::sendEvent(this, &changed);
    verticalScrollBar()->update();
  });
}

void ScrollArea::setPage(QWidget* page) {
  setWidget(page);
  page->setAutoFillBackground(false);
}

}  // namespace tollbeam
