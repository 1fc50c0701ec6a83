// Where the popover goes: beside the panel that holds the status item, centred on the item, whole
// on the screen.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace tollbeam {

/// The popover's top left corner. `anchor`: the clicked point; `screen`: the whole screen that
/// holds it; `workArea`: the screen less its panels. All in the same pixels.
[[nodiscard]] QPoint popoverPosition(QPoint anchor, QRect screen, QRect workArea, QSize size);

}  // namespace tollbeam
