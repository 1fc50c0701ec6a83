// Where the popover goes: beside the panel that holds the status item, centred on the item, whole
// on the screen.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace tollbeam {

/// From the panel, and from the screen's edges.
inline constexpr int kPopoverDistance = 8;

/// The popover's top left corner. `anchor`: the clicked point; `screen`: the whole screen that
/// holds it; `workArea`: the screen less its panels. All in the same pixels. A popover that is too
/// large for the work area shows its beginning.
[[nodiscard]] QPoint popoverPosition(QPoint anchor, QRect screen, QRect workArea, QSize size,
                                     int distance = kPopoverDistance);

}  // namespace tollbeam
