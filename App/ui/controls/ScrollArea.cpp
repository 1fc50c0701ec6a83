#include "ui/controls/ScrollArea.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>

namespace tollbeam {

namespace {

constexpr int kThickness = 5;
constexpr int kInset = 3;
constexpr int kLeastLength = 24;

/// Shows and moves the area's own scroll bar, which is hidden.
class Bar final : public QWidget {
 public:
  Bar(const Style& style, QScrollBar* real, QWidget* parent)
      : QWidget(parent), style_(style), real_(real) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(style_.colours().scrollBar);
    const double radius = style_.px(kThickness) / 2.0;
    painter.drawRoundedRect(thumb(), radius, radius);
  }

  void mousePressEvent(QMouseEvent* event) override {
    const double at = event->position().y();
    const QRectF now = thumb();
    grip_ = now.top() <= at && at <= now.bottom() ? at - now.top() : now.height() / 2;
    mouseMoveEvent(event);
  }

  void mouseMoveEvent(QMouseEvent* event) override {
    const QRectF now = thumb();
    const double way = height() - 2.0 * style_.px(kInset) - now.height();
    if (way <= 0) return;
    const double share = (event->position().y() - grip_ - style_.px(kInset)) / way;
    real_->setValue(real_->minimum() + qRound(share * (real_->maximum() - real_->minimum())));
  }

  void wheelEvent(QWheelEvent* event) override { QCoreApplication::sendEvent(real_, event); }

 private:
  [[nodiscard]] QRectF thumb() const {
    const double inset = style_.px(kInset);
    const double way = height() - 2 * inset;
    const double page = std::max(1, real_->pageStep());
    const double range = std::max(1, real_->maximum() - real_->minimum());
    const double length =
        std::clamp(way * page / (range + page), std::min(style_.px(kLeastLength) * 1.0, way), way);
    const double top = (way - length) * (real_->value() - real_->minimum()) / range;
    return {inset, inset + top, style_.px(kThickness) * 1.0, length};
  }

  const Style& style_;
  QScrollBar* real_;
  double grip_ = 0;
};

}  // namespace

ScrollArea::ScrollArea(const Style& style, QWidget* parent)
    : QScrollArea(parent), style_(style), bar_(new Bar(style, verticalScrollBar(), this)) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  QScrollBar* real = verticalScrollBar();
  connect(real, &QScrollBar::valueChanged, bar_, QOverload<>::of(&QWidget::update));
  connect(real, &QScrollBar::rangeChanged, this, &ScrollArea::placeBar);
  connect(&style_, &Style::changed, this, &ScrollArea::placeBar);
  placeBar();
}

void ScrollArea::setPage(QWidget* page) {
  setWidget(page);
  page->setAutoFillBackground(false);
}

void ScrollArea::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  placeBar();
}

void ScrollArea::placeBar() {
  const QScrollBar* real = verticalScrollBar();
  bar_->setVisible(real->maximum() > real->minimum());
  // Wider than it looks, so that it can be caught.
  const int strip = style_.px(kThickness + 2 * kInset);
  bar_->setGeometry(
      QStyle::visualRect(layoutDirection(), rect(), {width() - strip, 0, strip, height()}));
  bar_->raise();
  bar_->update();
}

}  // namespace tollbeam
