#include "values/Value.h"

#include <bit>
#include <cmath>

namespace tollbeam {

namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;

std::optional<std::int64_t> integerOf(double number) {
  const double whole = std::trunc(number);
  if (whole >= -kTwoTo63 && whole < kTwoTo63) return static_cast<std::int64_t>(whole);
  if (whole >= kTwoTo63 && whole < 2 * kTwoTo63) {
    return std::bit_cast<std::int64_t>(static_cast<std::uint64_t>(whole));
  }
  return std::nullopt;
}

}  // namespace

std::optional<bool> Value::flag() const {
  if (const auto* flag = std::get_if<bool>(&held_)) return *flag;
  return std::nullopt;
}

std::optional<double> Value::number() const {
  if (const auto* n = std::get_if<std::int64_t>(&held_)) return static_cast<double>(*n);
  if (const auto* n = std::get_if<std::uint64_t>(&held_)) return static_cast<double>(*n);
  if (const auto* n = std::get_if<double>(&held_)) return *n;
  return std::nullopt;
}

std::optional<std::int64_t> Value::integer() const {
  if (const auto* n = std::get_if<std::int64_t>(&held_)) return *n;
  if (const auto* n = std::get_if<std::uint64_t>(&held_)) return std::bit_cast<std::int64_t>(*n);
  if (const auto* n = std::get_if<double>(&held_)) return integerOf(*n);
  return std::nullopt;
}

bool Value::isIntegral() const {
  return std::holds_alternative<std::int64_t>(held_) ||
         std::holds_alternative<std::uint64_t>(held_);
}

const Value* find(const Dictionary& dictionary, std::string_view key) {
  const auto at = dictionary.find(key);
  return at == dictionary.end() ? nullptr : &at->second;
}

}  // namespace tollbeam
