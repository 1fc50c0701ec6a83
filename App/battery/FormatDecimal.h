#pragma once

#include <array>
#include <charconv>
#include <string>

namespace tollbeam {

/// As printf's "%.{decimals}f" in the C locale: a point in every language, and a tie goes to the
/// even neighbour (82.5 is "82", 30.25 is "30.2"). `decimals`: 0 or more.
[[nodiscard]] inline std::string formatDecimal(double number, int decimals) {
  std::array<char, 512> text{};  // the largest double has 309 digits
  const auto result = std::to_chars(text.data(), text.data() + text.size(), number,
                                    std::chars_format::fixed, decimals);
  return {text.data(), result.ptr};
}

}  // namespace tollbeam
