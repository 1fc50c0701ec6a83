// The colour of the panel behind an item that its host will not recolour (LXQt, MATE). Read from
// what the panel shows: its colour comes from a style sheet, images and a palette that are not ours
// to evaluate, and may be half transparent over a wallpaper. The screen has the result.
#pragma once

#include <QColor>
#include <optional>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {

/// The prevailing colour of the panel at `place` (physical pixels of the screen), or of the largest
/// where no place is known; absent when there is no panel to be seen.
[[nodiscard]] std::optional<QColor> panelColour(const XServer& server,
                                                std::optional<QPoint> place = std::nullopt);

}  // namespace tollbeam
