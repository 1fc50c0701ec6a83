// How well one colour is to be seen on another, as the accessibility guidelines of the web define
// it: 4.5 is enough for text, 3 for large text and symbols, 7 where more contrast is asked for.
#pragma once

#include <QColor>

namespace tollbeam {

/// From 1 (the same) to 21 (black and white). Opacity does not count.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

}  // namespace tollbeam
