// A font of the toolkit from a desktop's description of one.
#pragma once

#include <QFont>

#include "platform/freedesktop/appearance/readings/Look.h"

namespace tollbeam {

/// What the look does not name is taken from `usual`; its text scale applies to both.
[[nodiscard]] QFont desktopFont(const Look& look, const QFont& usual);

}  // namespace tollbeam
