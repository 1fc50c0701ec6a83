#include "platform/freedesktop/appearance/readings/ThemeName.h"

#include <algorithm>
#include <string>

namespace tollbeam {
namespace {

std::string inSmallLetters(std::string_view text) {
  std::string small(text);
  for (char& c : small) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return small;
}

bool hasWord(std::string_view text, std::string_view word) {
  constexpr std::string_view kBetween = "-_:. ";
  while (!text.empty()) {
    const auto end = std::min(text.find_first_of(kBetween), text.size());
    if (text.substr(0, end) == word) return true;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return false;
}

}  // namespace

bool isDarkTheme(std::string_view name) {
  const std::string small = inSmallLetters(name);
  return hasWord(small, "dark") || (isHighContrastTheme(name) && small.ends_with("inverse"));
}

bool isHighContrastTheme(std::string_view name) {
  const std::string small = inSmallLetters(name);
  return small.starts_with("highcontrast") || small.starts_with("contrasthigh");
}

}  // namespace tollbeam
