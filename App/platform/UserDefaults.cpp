#include "platform/UserDefaults.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace tollbeam {

namespace {

std::string_view withoutLeadingSpaceAndPlus(std::string_view text) {
  const auto start = text.find_first_not_of(" \t\n\r\f\v");
  text.remove_prefix(std::min(start, text.size()));
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

std::int64_t leadingInteger(std::string_view text) {
  text = withoutLeadingSpaceAndPlus(text);
  std::int64_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec == std::errc::result_out_of_range) {
    return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                                 : std::numeric_limits<std::int64_t>::max();
  }
  return number;
}

double leadingDouble(std::string_view text) {
  text = withoutLeadingSpaceAndPlus(text);
  // "inf" and "nan" are words here, not numbers.
  const auto digits = text.starts_with('-') ? text.substr(1) : text;
  if (digits.empty() || (digits[0] != '.' && (digits[0] < '0' || digits[0] > '9'))) return 0;
  double number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc() ? number : 0;
}

std::int64_t clampedToInteger(double number) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (std::isnan(number)) return 0;
  if (number >= kTwoTo63) return std::numeric_limits<std::int64_t>::max();
  if (number < -kTwoTo63) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(number);
}

bool equalsIgnoringCase(std::string_view text, std::string_view lower) {
  return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
  });
}

}  // namespace

bool UserDefaults::boolForKey(std::string_view key) const {
  const Value* value = valueForKey(key);
  if (!value) return false;
  if (const auto flag = value->flag()) return *flag;
  if (const auto number = value->number()) return *number != 0;
  if (const auto* text = value->text()) {
    return equalsIgnoringCase(*text, "yes") || equalsIgnoringCase(*text, "true") || *text == "1";
  }
  return false;
}

std::int64_t UserDefaults::integerForKey(std::string_view key) const {
  const Value* value = valueForKey(key);
  if (!value) return 0;
  if (const auto flag = value->flag()) return *flag ? 1 : 0;
  if (value->isIntegral()) return value->integer().value_or(0);
  if (const auto number = value->number()) return clampedToInteger(*number);
  if (const auto* text = value->text()) return leadingInteger(*text);
  return 0;
}

double UserDefaults::doubleForKey(std::string_view key) const {
  const Value* value = valueForKey(key);
  if (!value) return 0;
  if (const auto flag = value->flag()) return *flag ? 1 : 0;
  if (const auto number = value->number()) return *number;
  if (const auto* text = value->text()) return leadingDouble(*text);
  return 0;
}

std::optional<std::string> UserDefaults::stringForKey(std::string_view key) const {
  const Value* value = valueForKey(key);
  if (!value || !value->text()) return std::nullopt;
  return *value->text();
}

void UserDefaults::registerDefaults(const Dictionary& defaults) {
  for (const auto& [key, value] : defaults) registered_.insert_or_assign(key, value);
}

const Value* UserDefaults::valueForKey(std::string_view key) const {
  if (const Value* value = stored(key)) return value;
  return find(registered_, key);
}

}  // namespace tollbeam
