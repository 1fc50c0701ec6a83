// One value of a key/value description or of the preferences store: flag, number, text, list,
// dictionary or null. The kinds are never mixed up: `true` is no number and 1 is no flag, because
// the sources that we read keep them apart and a mix-up has always been a damaged reading.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tollbeam {

class Value;
using List = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;

/// No value, where other programs' settings say so: kept so that it can be written back.
struct Null {
  friend bool operator==(const Null&, const Null&) = default;
};

class Value {
 public:
  // Each takes exactly its own type. A plain `bool` would take every pointer for a flag, a plain
  // number every character.
  Value(std::same_as<bool> auto flag) : held_(flag) {}
  Value(std::same_as<int> auto number) : held_(std::int64_t{number}) {}
  Value(std::same_as<std::int64_t> auto number) : held_(number) {}
  Value(std::same_as<std::uint64_t> auto number) : held_(number) {}
  Value(std::same_as<double> auto number) : held_(number) {}
  Value(std::nullptr_t) = delete;
  Value(Null null) : held_(null) {}
  Value(const char* text) : held_(std::string(text)) {}
  Value(std::string text) : held_(std::move(text)) {}
  Value(List list) : held_(std::move(list)) {}
  Value(Dictionary dictionary) : held_(std::move(dictionary)) {}

  [[nodiscard]] bool isNull() const { return std::holds_alternative<Null>(held_); }

  /// The flag; absent when the value is of another kind.
  [[nodiscard]] std::optional<bool> flag() const;

  /// The number as a double; absent when the value is no number.
  [[nodiscard]] std::optional<double> number() const;

  /// The number as a signed 64-bit integer: a fraction is cut off, and 2^63 or more is the
  /// signed integer of the same 64 bits (registers report negative currents that way). Absent
  /// when the value is no number, not finite, or needs more than 64 bits.
  [[nodiscard]] std::optional<std::int64_t> integer() const;

  /// The text; null when the value is of another kind. Valid as long as the value.
  [[nodiscard]] const std::string* text() const { return std::get_if<std::string>(&held_); }
  [[nodiscard]] const List* list() const { return std::get_if<List>(&held_); }
  [[nodiscard]] const Dictionary* dictionary() const { return std::get_if<Dictionary>(&held_); }

  /// True when a number is held as an integer (80), false for a double (80.0) and all else.
  [[nodiscard]] bool isIntegral() const;

  friend bool operator==(const Value&, const Value&) = default;

 private:
  std::variant<Null, bool, std::int64_t, std::uint64_t, double, std::string, List, Dictionary>
      held_;
};

/// The value under `key`; null when there is none.
[[nodiscard]] const Value* find(const Dictionary& dictionary, std::string_view key);

}  // namespace tollbeam
