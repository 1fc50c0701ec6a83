#include "ui/controls/Divider.h"

#include <QPainter>

#include "ui/controls/FollowStyle.h"

namespace tollbeam {

Divider::Divider(const Style& style, QWidget* parent) : QWidget(parent), style_(style) {
  setFixedHeight(1);
  followStyle(*this, style);
}

void Divider::paintEvent(QPaintEvent* /*event*/) {
  QPainter(this).fillRect(rect(), style_.colours().hairline);
}

}  // namespace tollbeam
