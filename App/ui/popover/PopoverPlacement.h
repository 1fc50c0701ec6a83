// Places the popover beside the panel that holds the status item, centred on the item and entirely
// on the screen.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace tollbeam {

/// From the panel and from the edges of the screen, at scale 1.
inline constexpr int kPopoverDistance = 8;

/// The popover's top left corner. `anchor`: the clicked point; `screen`: the whole screen that
/// holds it; `workArea`: the screen without its panels. All in logical pixels. A popover that is
/// too large for the work area begins at the area's top left corner.
[[nodiscard]] QPoint popoverPosition(QPoint anchor, QRect screen, QRect workArea, QSize size,
                                     int distance = kPopoverDistance);

}  // namespace tollbeam
