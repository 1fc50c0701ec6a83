#include "ui/popover/PopoverPlacement.h"

#include <algorithm>

namespace tollbeam {

QPoint popoverPosition(QPoint anchor, QRect screen, QRect workArea, QSize size, int distance) {
  const int left = workArea.left() + distance;
  const int top = workArea.top() + distance;
  // Not beyond the left and the top, where the popover is too large.
  const int right = std::max(left, workArea.right() + 1 - distance - size.width());
  const int bottom = std::max(top, workArea.bottom() + 1 - distance - size.height());

  // Panels are at the edges of the screen: the nearest edge is that of the item's panel.
  const int toTop = anchor.y() - screen.top();
  const int toBottom = screen.bottom() - anchor.y();
  const int toLeft = anchor.x() - screen.left();
  const int toRight = screen.right() - anchor.x();
  const int nearest = std::min({toTop, toBottom, toLeft, toRight});

  const int centredX = std::clamp(anchor.x() - size.width() / 2, left, right);
  const int centredY = std::clamp(anchor.y() - size.height() / 2, top, bottom);
  // Near a corner of the screen, a panel along the top or the bottom comes first.
  constexpr int kPanelThickness = 64;
  if (toTop == nearest || (toTop < kPanelThickness && workArea.top() > screen.top())) {
    return {centredX, top};
  }
  if (toBottom == nearest || (toBottom < kPanelThickness && workArea.bottom() < screen.bottom())) {
    return {centredX, bottom};
  }
  return {toLeft == nearest ? left : right, centredY};
}

}  // namespace tollbeam
