#include "platform/freedesktop/appearance/readings/FontDescription.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace tollbeam {
namespace {

constexpr double kLargestSize = 500;
constexpr std::string_view kSpaces = " \t\r\n";

enum class Aspect { weight, slant, stretch, ignored };

struct StyleWord {
  std::string_view word;
  Aspect aspect;
  int value = 0;
};

// Written here without hyphens and in small letters.
constexpr std::array kStyleWords = std::to_array<StyleWord>({
    {"thin", Aspect::weight, 100},
    {"ultralight", Aspect::weight, 200},
    {"extralight", Aspect::weight, 200},
    {"light", Aspect::weight, 300},
    {"semilight", Aspect::weight, 350},
    {"demilight", Aspect::weight, 350},
    {"book", Aspect::weight, 380},
    {"regular", Aspect::weight, 400},
    {"medium", Aspect::weight, 500},
    {"semibold", Aspect::weight, 600},
    {"demibold", Aspect::weight, 600},
    {"bold", Aspect::weight, 700},
    {"ultrabold", Aspect::weight, 800},
    {"extrabold", Aspect::weight, 800},
    {"heavy", Aspect::weight, 900},
    {"black", Aspect::weight, 900},
    {"ultraheavy", Aspect::weight, 1000},
    {"extraheavy", Aspect::weight, 1000},
    {"ultrablack", Aspect::weight, 1000},
    {"extrablack", Aspect::weight, 1000},
    {"normal", Aspect::slant, 0},
    {"roman", Aspect::slant, 0},
    {"italic", Aspect::slant, 1},
    {"oblique", Aspect::slant, 1},
    {"ultracondensed", Aspect::stretch, 50},
    {"extracondensed", Aspect::stretch, 62},
    {"condensed", Aspect::stretch, 75},
    {"semicondensed", Aspect::stretch, 87},
    {"semiexpanded", Aspect::stretch, 112},
    {"expanded", Aspect::stretch, 125},
    {"extraexpanded", Aspect::stretch, 150},
    {"ultraexpanded", Aspect::stretch, 200},
    {"smallcaps", Aspect::ignored},
    {"allsmallcaps", Aspect::ignored},
    {"petitecaps", Aspect::ignored},
    {"allpetitecaps", Aspect::ignored},
    {"unicase", Aspect::ignored},
    {"titlecaps", Aspect::ignored},
});

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kSpaces);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpaces) - first + 1);
}

std::string_view lastWord(std::string_view text) {
  const auto space = text.find_last_of(kSpaces);
  return space == std::string_view::npos ? text : text.substr(space + 1);
}

std::string_view withoutLastWord(std::string_view text) {
  return trimmed(text.substr(0, text.size() - lastWord(text).size()));
}

const StyleWord* styleWord(std::string_view word) {
  std::string plain;
  for (const char c : word) {
    if (c != '-') plain += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  const auto* found = std::find_if(kStyleWords.begin(), kStyleWords.end(),
                                   [&](const StyleWord& known) { return known.word == plain; });
  return found == kStyleWords.end() ? nullptr : found;
}

void apply(const StyleWord& word, FontDescription& font) {
  switch (word.aspect) {
    case Aspect::weight:
      font.weight = word.value;
      break;
    case Aspect::slant:
      font.italic = word.value != 0;
      break;
    case Aspect::stretch:
      font.stretch = word.value;
      break;
    case Aspect::ignored:
      break;
  }
}

/// Whether the word is a number, sensible or not.
bool readSize(std::string_view word, FontDescription& font) {
  constexpr std::string_view kPixels = "px";
  const bool pixels = word.ends_with(kPixels);
  if (pixels) word.remove_suffix(kPixels.size());
  double size = 0;
  const auto [end, error] =
      std::from_chars(word.data(), word.data() + word.size(), size, std::chars_format::fixed);
  if (error != std::errc() || end != word.data() + word.size()) return false;
  if (size > 0 && size <= kLargestSize) {
    font.size = size;
    font.sizeIsPixels = pixels;
  }
  return true;
}

std::vector<std::string> familiesOf(std::string_view list) {
  std::vector<std::string> families;
  while (!list.empty()) {
    const auto comma = std::min(list.find(','), list.size());
    const auto family = trimmed(list.substr(0, comma));
    if (!family.empty()) families.emplace_back(family);
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
  return families;
}

}  // namespace

FontDescription parseFontDescription(std::string_view text) {
  FontDescription font;
  auto rest = trimmed(text);
  while (lastWord(rest).starts_with('@') || lastWord(rest).starts_with('#')) {
    rest = withoutLastWord(rest);
  }
  if (!rest.empty() && readSize(lastWord(rest), font)) rest = withoutLastWord(rest);
  // A comma ends the families, so that one may be called "Bold".
  while (const auto* word = styleWord(lastWord(rest))) {
    apply(*word, font);
    rest = withoutLastWord(rest);
  }
  font.families = familiesOf(rest);
  return font;
}

}  // namespace tollbeam
