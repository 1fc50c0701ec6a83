// The one type scale. The family and the base size are the desktop's; every role is a share of it.
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

/// The base size in logical pixels, however the font gives it.
[[nodiscard]] double pixelSize(const QFont& base);

/// The role's font, with a fraction of a pixel where the scale asks for one.
[[nodiscard]] QFont font(Role role, const QFont& base);

/// Whether the font's family comes in a medium weight here.
[[nodiscard]] bool hasMedium(const QFont& font);

/// The ring's percentage at 28 pixels times `scale`, a little tighter. Its stroke (see RingView)
/// makes it semibold.
[[nodiscard]] QFont ringFont(const QFont& base, double scale);

/// The role's line at scale 1, in logical pixels.
[[nodiscard]] int lineHeight(Role role);

}  // namespace tollbeam
