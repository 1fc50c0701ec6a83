#include "ui/controls/ScrollArea.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace tollbeam {

namespace {

constexpr double kThickness = 5;
constexpr double kInset = 3;
constexpr double kLeastLength = 24;

class Bar final : public QScrollBar {
 public:
  Bar(const Style& style, QWidget* parent) : QScrollBar(Qt::Vertical, parent), style_(style) {
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    // Wheel and keys go to the page; a bar this thin is there to be seen.
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const double all = maximum() - minimum() + pageStep();
    const double length =
        std::clamp(height() * pageStep() / all, style_.px(kLeastLength) * 1.0, height() * 1.0);
    const double range = std::max(1, maximum() - minimum());
    const double top = (height() - length) * (value() - minimum()) / range;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(style_.colours().scrollBar);
    painter.drawRoundedRect(QRectF(0, top, width(), length), width() / 2.0, width() / 2.0);
  }

 private:
  const Style& style_;
};

}  // namespace

ScrollArea::ScrollArea(const Style& style, QWidget* parent)
    : QScrollArea(parent), style_(style), bar_(new Bar(style, this)) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setAutoFillBackground(false);
  QScrollBar* real = verticalScrollBar();
  connect(real, &QScrollBar::valueChanged, bar_, &QScrollBar::setValue);
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
  bar_->setRange(real->minimum(), real->maximum());
  bar_->setPageStep(real->pageStep());
  bar_->setValue(real->value());
  bar_->setVisible(real->maximum() > real->minimum());
  const int inset = style_.px(kInset);
  const QRect strip(width() - inset - style_.px(kThickness), inset, style_.px(kThickness),
                    height() - 2 * inset);
  bar_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), strip));
  bar_->raise();
}

}  // namespace tollbeam
