// The colour of the panel behind an item that its host does not recolour (LXQt, MATE). Read from
// the screen: it results from style sheets, images and a palette of another toolkit, and may be
// half transparent over a wallpaper.
#pragma once

#include <QColor>
#include <optional>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {

/// The most frequent colour of the panel at `place` (physical pixels of the screen), or of the
/// largest panel without a place; absent when there is no such panel or it cannot be read.
[[nodiscard]] std::optional<QColor> panelColour(const XServer& server,
                                                std::optional<QPoint> place = std::nullopt);

}  // namespace tollbeam
