#include "ui/controls/ScrollPage.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

namespace tollbeam {

namespace {

// Between two turns of the wheel that belong together.
constexpr qint64 kSameScroll = 500;
constexpr int kWidth = 5;
constexpr int kMargin = 3;
constexpr int kEnds = 4;
constexpr int kShortest = 32;
// So much of the page around the control with the focus is shown with it.
constexpr int kAround = 64;

}  // namespace

ScrollPage::ScrollPage(const Style& style, QWidget* page, QWidget* parent)
    : QScrollArea(parent), style_(style) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  setWidget(page);
  thumb_ = new ScrollThumb(style, verticalScrollBar(), this);
  connect(&style_, &Style::changed, this, &ScrollPage::placeThumb);
  placeThumb();
}

void ScrollPage::keepWheelFrom(QWidget* control) { control->installEventFilter(this); }

bool ScrollPage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel && watched != widget() && scrolled_.isValid() &&
      scrolled_.elapsed() < kSameScroll) {
    event->ignore();
    return true;
  }
  return QScrollArea::eventFilter(watched, event);
}

bool ScrollPage::focusNextPrevChild(bool next) {
  const bool moved = QScrollArea::focusNextPrevChild(next);
  if (QWidget* control = widget()->focusWidget(); moved && control && control->hasFocus()) {
    ensureWidgetVisible(control, 0, style_.px(kAround));
  }
  return moved;
}

void ScrollPage::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  placeThumb();
}

void ScrollPage::wheelEvent(QWheelEvent* event) {
  scrolled_.start();
  QScrollArea::wheelEvent(event);
}

void ScrollPage::placeThumb() {
  const int wide = thumb_->wantedWidth();
  thumb_->setGeometry(QStyle::visualRect(layoutDirection(), rect(),
                                         {width() - wide, 0, wide, height()}));
  thumb_->raise();
}

ScrollThumb::ScrollThumb(const Style& style, QScrollBar* bar, QWidget* parent)
    : QWidget(parent), style_(style), bar_(bar) {
  connect(bar_, &QScrollBar::valueChanged, this, [this] { update(); });
  connect(bar_, &QScrollBar::rangeChanged, this, [this] { follow(); });
  connect(&style_, &Style::changed, this, [this] { update(); });
  follow();
}

int ScrollThumb::wantedWidth() const { return style_.px(kWidth + 2 * kMargin); }

void ScrollThumb::follow() {
  setVisible(bar_->maximum() > bar_->minimum());
  update();
}

QRect ScrollThumb::thumb() const {
  const int way = height() - 2 * style_.px(kEnds);
  const int span = bar_->maximum() - bar_->minimum();
  const int page = std::max(bar_->pageStep(), 1);
  const int length = std::clamp(way * page / (span + page), std::min(style_.px(kShortest), way),
                                std::max(way, 1));
  const int from = span == 0 ? 0 : (way - length) * (bar_->value() - bar_->minimum()) / span;
  return {style_.px(kMargin), style_.px(kEnds) + from, style_.px(kWidth), length};
}

void ScrollThumb::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(style_.colours().scrollBar);
  const double radius = style_.px(kWidth) / 2.0;
  painter.drawRoundedRect(thumb(), radius, radius);
}

void ScrollThumb::mousePressEvent(QMouseEvent* event) {
  const int at = event->position().toPoint().y();
  const QRect now = thumb();
  // A press beside the thumb brings it there.
  grip_ = at >= now.top() && at <= now.bottom() ? at - now.top() : now.height() / 2;
  mouseMoveEvent(event);
}

void ScrollThumb::mouseMoveEvent(QMouseEvent* event) {
  const int way = height() - 2 * style_.px(kEnds) - thumb().height();
  if (way <= 0) return;
  const int from = event->position().toPoint().y() - grip_ - style_.px(kEnds);
  bar_->setValue(bar_->minimum() +
                 qRound(double(from) * (bar_->maximum() - bar_->minimum()) / way));
}

void ScrollThumb::wheelEvent(QWheelEvent* event) { QApplication::sendEvent(bar_, event); }

}  // namespace tollbeam
