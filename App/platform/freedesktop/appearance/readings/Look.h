// How programs are to look on this desktop, according to its services: the settings portal, and on
// X11 the settings daemon. Where both have a setting, the one that the desktop's own programs
// follow counts.
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

/// Settings that are absent are as they are here.
struct Look {
  ColourScheme scheme = ColourScheme::light;
  bool highContrast = false;
  bool animations = true;
  std::optional<Accent> accent;
  std::optional<FontDescription> font;
  /// A factor for the font's size: 0.5 to 3.
  double textScale = 1;

  friend bool operator==(const Look&, const Look&) = default;
};

/// The portal's settings are a dictionary of its namespaces, the daemon's are by name; each is
/// empty where the service is missing. A value of the wrong kind or out of range counts as absent.
[[nodiscard]] Look lookOf(const Dictionary& portal, const Dictionary& xsettings);

}  // namespace tollbeam
