// How the desktop wants programs to look, made of what its services say: the settings portal, and
// on X11 the settings daemon. Where several speak of the same, the one that the desktop's own
// programs listen to counts.
#pragma once

#include <optional>

#include "platform/freedesktop/appearance/readings/FontDescription.h"
#include "values/Value.h"

namespace tollbeam {

enum class ColourScheme { light, dark };

struct Accent {
  /// 0 to 1 each.
  double red = 0, green = 0, blue = 0;
  friend bool operator==(const Accent&, const Accent&) = default;
};

/// What nobody speaks of is as it is here.
struct Look {
  ColourScheme scheme = ColourScheme::light;
  bool highContrast = false;
  bool animations = true;
  std::optional<Accent> accent;
  std::optional<FontDescription> font;
  /// What the font's size is to be multiplied with: 0.5 to 3.
  double textScale = 1;

  friend bool operator==(const Look&, const Look&) = default;
};

/// The portal's settings are a dictionary of its namespaces, the daemon's are by name; each empty
/// where there is none. A value of the wrong kind or out of range counts as not said.
[[nodiscard]] Look lookOf(const Dictionary& portal, const Dictionary& xsettings);

}  // namespace tollbeam
