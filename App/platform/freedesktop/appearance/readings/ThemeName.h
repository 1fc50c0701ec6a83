// What the name of a GTK theme says of its colours. There is no other way to know: the rest of it
// is a style sheet in a language of GTK's own.
#pragma once

#include <string_view>

namespace tollbeam {

/// "Adwaita-dark", "Adwaita:dark", "Mint-Y-Dark-Aqua", "HighContrastInverse", but not "Arc-Darker",
/// which has dark title bars alone.
[[nodiscard]] bool isDarkTheme(std::string_view name);

/// "HighContrast", "HighContrastInverse", and MATE's "ContrastHigh".
[[nodiscard]] bool isHighContrastTheme(std::string_view name);

}  // namespace tollbeam
