// Desktop entry files, as far as autostart needs them: the keys of the group "Desktop Entry". Lines
// that are not touched stay as they are, comments and other groups included.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tollbeam {

class DesktopEntry {
 public:
  /// Of anything; what is no desktop entry has no values.
  explicit DesktopEntry(std::string_view text);
  /// A new entry without keys.
  DesktopEntry();

  /// The raw value, spaces around it removed; absent when the key is not there.
  [[nodiscard]] std::optional<std::string> value(std::string_view key) const;
  /// Whether the key is there and true, or false.
  [[nodiscard]] bool isTrue(std::string_view key) const;
  [[nodiscard]] bool isFalse(std::string_view key) const;

  void set(std::string_view key, std::string_view rawValue);
  void remove(std::string_view key);

  [[nodiscard]] std::string text() const;

 private:
  /// The lines of the group, without its heading: [first, last).
  struct Range {
    std::size_t first = 0;
    std::size_t last = 0;
  };
  [[nodiscard]] std::optional<Range> group() const;
  [[nodiscard]] std::optional<std::size_t> lineOf(std::string_view key) const;

  std::vector<std::string> lines_;
};

/// A text as a value of type string: backslashes, line ends and a leading space escaped.
[[nodiscard]] std::string entryString(std::string_view text);

/// The text of a value of type string; the reverse of `entryString`.
[[nodiscard]] std::string textOfEntryString(std::string_view value);

/// A program's path as a value of Exec that runs just this program without arguments. Absent when
/// no value does so on every desktop: systemd, which starts programs for some, reads $, ` and
/// \ wrongly.
[[nodiscard]] std::optional<std::string> execOf(std::string_view program);

}  // namespace tollbeam
