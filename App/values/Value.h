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
/// Values in an order.
using List = std::vector<Value>;
/// Values by key.
using Dictionary = std::map<std::string, Value, std::less<>>;

/// No value, where other programs' settings say so: kept so that it can be written back.
struct Null {
  /// Always.
  friend bool operator==(const Null&, const Null&) = default;
};

/// One value of a key/value description or of the settings. The kinds are never mixed up: `true` is
/// no number and 1 is no flag, because the sources keep them apart and a mix-up has always been a
/// damaged reading.
class Value {
 public:
  // Each constructor takes exactly its own type. A plain `bool` would take every pointer for a
  // flag, a plain number every character.
  Value(std::same_as<bool> auto flag) : held_(flag) {}                   ///< A flag.
  Value(std::same_as<int> auto number) : held_(std::int64_t{number}) {}  ///< An integer.
  Value(std::same_as<std::int64_t> auto number) : held_(number) {}       ///< An integer.
  Value(std::same_as<std::uint64_t> auto number) : held_(number) {}      ///< An integer.
  Value(std::same_as<double> auto number) : held_(number) {}             ///< A number.
  Value(std::nullptr_t) = delete;
  Value(Null null) : held_(null) {}                               ///< No value.
  Value(const char* text) : held_(std::string(text)) {}           ///< Text.
  Value(std::string text) : held_(std::move(text)) {}             ///< Text.
  Value(List list) : held_(std::move(list)) {}                    ///< A list.
  Value(Dictionary dictionary) : held_(std::move(dictionary)) {}  ///< A dictionary.

  /// Whether it is no value.
  [[nodiscard]] bool isNull() const { return std::holds_alternative<Null>(held_); }

  /// The flag; absent when the value is of another kind.
  [[nodiscard]] std::optional<bool> flag() const;

  /// The number; absent when the value is of another kind.
  [[nodiscard]] std::optional<double> number() const;

  /// The number as a signed 64-bit integer: a fraction is cut off, and 2^63 or more is the
  /// signed integer of the same 64 bits (registers report negative currents that way). Absent
  /// when the value is no number, not finite, or needs more than 64 bits.
  [[nodiscard]] std::optional<std::int64_t> integer() const;

  /// The text; null when the value is of another kind. Valid as long as the value.
  [[nodiscard]] const std::string* text() const { return std::get_if<std::string>(&held_); }
  /// The list; null when the value is of another kind. Valid as long as the value.
  [[nodiscard]] const List* list() const { return std::get_if<List>(&held_); }
  /// The dictionary; null when the value is of another kind. Valid as long as the value.
  [[nodiscard]] const Dictionary* dictionary() const { return std::get_if<Dictionary>(&held_); }

  /// Whether a number is held as an integer (80), not as a double (80.0).
  [[nodiscard]] bool isIntegral() const;

  /// Equal values are of one kind; 80 and 80.0 differ.
  friend bool operator==(const Value&, const Value&) = default;

 private:
  std::variant<Null, bool, std::int64_t, std::uint64_t, double, std::string, List, Dictionary>
      held_;
};

/// The value under `key`; null when there is none.
[[nodiscard]] const Value* find(const Dictionary& dictionary, std::string_view key);

}  // namespace tollbeam
