#include "platform/freedesktop/appearance/readings/FontDescription.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace tollbeam {
namespace {

constexpr double kLargestSize = 500;
constexpr std::string_view kSpaces = " \t\r\n";

using Word = std::pair<std::string_view, int>;

// The words of style, in small letters and without hyphens.
constexpr std::array kWeights{
    Word{"thin", 100},        Word{"ultralight", 200},  Word{"extralight", 200},
    Word{"light", 300},       Word{"semilight", 350},   Word{"demilight", 350},
    Word{"book", 380},        Word{"regular", 400},     Word{"medium", 500},
    Word{"semibold", 600},    Word{"demibold", 600},    Word{"bold", 700},
    Word{"ultrabold", 800},   Word{"extrabold", 800},   Word{"heavy", 900},
    Word{"black", 900},       Word{"ultraheavy", 1000}, Word{"extraheavy", 1000},
    Word{"ultrablack", 1000}, Word{"extrablack", 1000}};
constexpr std::array kSlants{Word{"normal", 0}, Word{"roman", 0}, Word{"italic", 1},
                             Word{"oblique", 1}};
constexpr std::array kStretches{Word{"ultracondensed", 50}, Word{"extracondensed", 62},
                                Word{"condensed", 75},      Word{"semicondensed", 87},
                                Word{"semiexpanded", 112},  Word{"expanded", 125},
                                Word{"extraexpanded", 150}, Word{"ultraexpanded", 200}};
constexpr std::array kIgnored{Word{"smallcaps", 0},  Word{"allsmallcaps", 0},
                              Word{"petitecaps", 0}, Word{"allpetitecaps", 0},
                              Word{"unicase", 0},    Word{"titlecaps", 0}};

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kSpaces);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpaces) - first + 1);
}

std::string_view lastWord(std::string_view text) {
  // Without a space npos + 1, which is 0.
  return text.substr(text.find_last_of(kSpaces) + 1);
}

std::string_view withoutLastWord(std::string_view text) {
  return trimmed(text.substr(0, text.size() - lastWord(text).size()));
}

// Sets what the word of style stands for; false for any other word.
bool readStyle(std::string_view word, FontDescription& font) {
  std::string plain;
  for (const char c : word) {
    if (c != '-') plain += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  const auto in = [&plain](const auto& words) {
    const auto* found = std::find_if(words.begin(), words.end(),
                                     [&](const Word& known) { return known.first == plain; });
    return found == words.end() ? nullptr : &found->second;
  };
  if (const int* weight = in(kWeights))
    font.weight = *weight;
  else if (const int* slant = in(kSlants))
    font.italic = *slant != 0;
  else if (const int* stretch = in(kStretches))
    font.stretch = *stretch;
  else
    return in(kIgnored) != nullptr;
  return true;
}

// Whether the word is a number, usable as a size or not.
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
  while (readStyle(lastWord(rest), font)) rest = withoutLastWord(rest);
  font.families = familiesOf(rest);
  return font;
}

}  // namespace tollbeam
