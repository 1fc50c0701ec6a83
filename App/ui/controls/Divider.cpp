#include "ui/controls/Divider.h"

#include <QPainter>

namespace tollbeam {

Divider::Divider(const Style& style, QWidget* parent) : QWidget(parent), style_(style) {
  setFixedHeight(1);
  connect(&style_, &Style::changed, this, qOverload<>(&QWidget::update));
}

void Divider::paintEvent(QPaintEvent* /*event*/) {
  QPainter(this).fillRect(rect(), style_.colours().hairline);
}

}  // namespace tollbeam
