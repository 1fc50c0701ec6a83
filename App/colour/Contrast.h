// How well one colour stands out from another, and how to make it stand out better.
#pragma once

#include <QColor>

namespace tollbeam {

/// 0 (black) to 1 (white), as WCAG 2 defines relative luminance. Opaque colours only.
[[nodiscard]] double relativeLuminance(const QColor& colour);

/// 1 (the same) to 21 (black on white), as WCAG 2 defines the contrast ratio.
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

/// `share` (0 to 1) of `colour`, the rest `ground`.
[[nodiscard]] QColor mixed(const QColor& colour, const QColor& ground, double share);

/// The first of `colour` mixed towards `strong` in steps of 5 % whose contrast with `ground` is at
/// least `ratio`; `strong` itself when none is.
[[nodiscard]] QColor readable(const QColor& colour, const QColor& strong, const QColor& ground,
                              double ratio);

}  // namespace tollbeam
