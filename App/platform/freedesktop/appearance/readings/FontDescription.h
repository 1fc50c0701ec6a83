// A font as GTK desktops name it, in one text: "Cantarell 11", "Noto Sans Bold Italic 10.5",
// "Ubuntu, Sans 11px". A family may have several words and be followed by words of style.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tollbeam {

struct FontDescription {
  /// In the order of preference; empty when the text names none.
  std::vector<std::string> families;
  /// 100 (thin) to 1000; 400 is regular, 700 bold.
  int weight = 400;
  bool italic = false;
  /// Percent of the normal width.
  int stretch = 100;
  /// Points, or pixels when `sizeIsPixels`; absent unless the text gives one from 0 to 500.
  std::optional<double> size;
  bool sizeIsPixels = false;

  friend bool operator==(const FontDescription&, const FontDescription&) = default;
};

/// Never fails: all but the size and the words of style is the family. Variations ("@wght=450") and
/// features are left out.
[[nodiscard]] FontDescription parseFontDescription(std::string_view text);

}  // namespace tollbeam
