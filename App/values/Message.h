#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace tollbeam {

/// A text for the user: an English pattern and, kept apart from it, the values that it mentions. A
/// translation of the pattern may put them in other places.
struct Message {
  /// UTF-8, with %1 to %9 in the places of the arguments. A place without an argument is plain
  /// text.
  std::string pattern;
  /// UTF-8. A % in an argument is plain text.
  std::vector<std::string> arguments;

  /// The empty text.
  Message() = default;
  /// A text without arguments.
  Message(const char* plain) : pattern(plain) {}
  /// A pattern with its arguments.
  Message(std::string text, std::vector<std::string> values = {})
      : pattern(std::move(text)), arguments(std::move(values)) {}

  /// The pattern with the arguments in their places.
  [[nodiscard]] std::string text() const;

  /// Two messages are equal when their texts are.
  friend bool operator==(const Message& a, const Message& b) { return a.text() == b.text(); }
  /// Writes the text.
  friend std::ostream& operator<<(std::ostream& out, const Message& message) {
    return out << message.text();
  }
};

}  // namespace tollbeam
