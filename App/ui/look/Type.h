// The type scale: the desktop gives the family and the base size, and every role is a share of it.
#pragma once

#include <QFont>

namespace tollbeam {

enum class Role {
  headline,
  body,
  bodyMedium,
  callout,
  calloutMedium,
  caption,
  captionMedium,
  caption2
};

/// The font's size in logical pixels, whether it is given in pixels or in points.
[[nodiscard]] double pixelSize(const QFont& base);

/// The size may be a fraction of a pixel.
[[nodiscard]] QFont font(Role role, const QFont& base);

/// Whether a medium weight of the font's family is installed.
[[nodiscard]] bool hasMedium(const QFont& font);

/// The font of the ring's percentage: 28 pixels times `scale`, set a little tighter. RingView
/// strokes its outline, which makes it look semibold.
[[nodiscard]] QFont ringFont(const QFont& base, double scale);

/// The height of a line at scale 1, in logical pixels.
[[nodiscard]] int lineHeight(Role role);

}  // namespace tollbeam
