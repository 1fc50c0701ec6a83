// A font of the toolkit from a desktop's description of one.
#pragma once

#include <QFont>

#include "platform/freedesktop/appearance/readings/Look.h"

namespace tollbeam {

/// What the look does not say is as in `usual`; its larger text counts for both.
[[nodiscard]] QFont desktopFont(const Look& look, const QFont& usual);

}  // namespace tollbeam
