// What Qt takes from the desktop by itself. Its theme plugins (Plasma's, LXQt's, qt6ct, GTK's) and
// its own reading of KDE's files bring colours, a font, or both, and follow changes; where there is
// none, Qt shows the light colours of its style and a font of its own whatever the desktop says.
#pragma once

namespace tollbeam {

struct ToolkitTheme {
  bool bringsColours = false;
  bool bringsFont = false;

  /// Ask before anything has set the application's palette or font. Which theme is at work is not
  /// told; that it is shows in what it has left of the defaults.
  [[nodiscard]] static ToolkitTheme ofApplication();
};

}  // namespace tollbeam
