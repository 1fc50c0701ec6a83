// The colours of our windows where the toolkit does not take the desktop's own: a light and a dark
// palette, each also with more contrast, with the desktop's accent colour where it has one. Every
// role of every group is set, so that the toolkit's own dialogs match our windows.
#pragma once

#include <QPalette>

#include "platform/freedesktop/appearance/readings/Look.h"

namespace tollbeam {

[[nodiscard]] QPalette desktopPalette(const Look& look);

}  // namespace tollbeam
