#include "ui/popover/PopoverPlacement.h"

#include <algorithm>

namespace tollbeam {

namespace {

int within(int wanted, int least, int most) { return std::max(least, std::min(wanted, most)); }

}  // namespace

QPoint popoverPosition(QPoint anchor, QRect screen, QRect workArea, QSize size, int distance) {
  const int left = workArea.left() + distance;
  const int top = workArea.top() + distance;
  const int right = workArea.left() + workArea.width() - distance - size.width();
  const int bottom = workArea.top() + workArea.height() - distance - size.height();

  // The item stands in a panel, and panels stand at edges: the nearest edge is the panel's.
  const int toTop = anchor.y() - screen.top();
  const int toBottom = screen.top() + screen.height() - 1 - anchor.y();
  const int toLeft = anchor.x() - screen.left();
  const int toRight = screen.left() + screen.width() - 1 - anchor.x();
  const int nearest = std::min({toTop, toBottom, toLeft, toRight});

  const int centredX = within(anchor.x() - size.width() / 2, left, right);
  const int centredY = within(anchor.y() - size.height() / 2, top, bottom);
  // In a corner both are near; panels along the top and the bottom are the rule.
  constexpr int kPanelThickness = 64;
  if (toTop == nearest || (toTop < kPanelThickness && workArea.top() > screen.top())) {
    return {centredX, top};
  }
  if (toBottom == nearest || (toBottom < kPanelThickness && workArea.bottom() < screen.bottom())) {
    return {centredX, std::max(top, bottom)};
  }
  return {toLeft == nearest ? left : std::max(left, right), centredY};
}

}  // namespace tollbeam
