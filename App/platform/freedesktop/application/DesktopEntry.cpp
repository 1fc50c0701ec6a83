#include "platform/freedesktop/application/DesktopEntry.h"

#include <algorithm>

namespace tollbeam {

namespace {

constexpr std::string_view kHeading = "[Desktop Entry]";

std::string_view trimmed(std::string_view text) {
  constexpr const char* kSpace = " \t\r";
  const auto first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

bool isHeading(const std::string& line) { return trimmed(line).starts_with('['); }

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// An argument of Exec, before the escapes of any string value.
std::string inQuotes(std::string_view text) {
  std::string argument = "\"";
  for (const char c : text) {
    if (c == '%') argument += '%';
    if (c == '"' || c == '`' || c == '$' || c == '\\') argument += '\\';
    argument += c;
  }
  return argument + '"';
}

/// A text without backslashes as one word of the shell.
std::string shellWord(std::string_view text) {
  std::string word = "'";
  for (const char c : text) {
    if (c == '\'')
      word += R"('"'"')";
    else
      word += c;
  }
  return word + '\'';
}

}  // namespace

DesktopEntry::DesktopEntry(std::string_view text) : lines_(linesOf(text)) {}

DesktopEntry::DesktopEntry() : lines_{std::string(kHeading)} {}

std::optional<DesktopEntry::Range> DesktopEntry::group() const {
  const auto heading = std::find_if(lines_.begin(), lines_.end(), [](const std::string& line) {
    return trimmed(line) == kHeading;
  });
  if (heading == lines_.end()) return std::nullopt;
  auto last = std::find_if(heading + 1, lines_.end(), isHeading);
  // Blank lines before the next group belong to the gap.
  while (last != heading + 1 && trimmed(*(last - 1)).empty()) --last;
  return Range{static_cast<std::size_t>(heading + 1 - lines_.begin()),
               static_cast<std::size_t>(last - lines_.begin())};
}

std::optional<std::size_t> DesktopEntry::lineOf(std::string_view key) const {
  const auto range = group();
  if (!range) return std::nullopt;
  for (std::size_t i = range->first; i < range->last; ++i) {
    const std::string_view line = lines_[i];
    const auto equals = line.find('=');
    if (equals != std::string_view::npos && trimmed(line.substr(0, equals)) == key) return i;
  }
  return std::nullopt;
}

std::optional<std::string> DesktopEntry::value(std::string_view key) const {
  const auto line = lineOf(key);
  if (!line) return std::nullopt;
  const std::string_view text = lines_[*line];
  return std::string(trimmed(text.substr(text.find('=') + 1)));
}

bool DesktopEntry::isTrue(std::string_view key) const {
  const auto text = value(key);
  // "1" and "0" are flags of old entries that desktops still honour.
  return text == "true" || text == "1";
}

bool DesktopEntry::isFalse(std::string_view key) const {
  const auto text = value(key);
  return text == "false" || text == "0";
}

void DesktopEntry::set(std::string_view key, std::string_view rawValue) {
  std::string line = std::string(key) + '=' + std::string(rawValue);
  if (const auto at = lineOf(key)) {
    lines_[*at] = std::move(line);
    return;
  }
  if (!group()) lines_.insert(lines_.begin(), std::string(kHeading));
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(group()->last), std::move(line));
}

void DesktopEntry::remove(std::string_view key) {
  while (const auto at = lineOf(key)) {
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*at));
  }
}

std::string DesktopEntry::text() const {
  std::string all;
  for (const std::string& line : lines_) all += line + '\n';
  return all;
}

std::string entryString(std::string_view text) {
  std::string value;
  for (const char c : text) {
    switch (c) {
      case '\\':
        value += "\\\\";
        break;
      case '\n':
        value += "\\n";
        break;
      case '\r':
        value += "\\r";
        break;
      case '\t':
        value += "\\t";
        break;
      case ' ':
        // Spaces after the equals sign would be cut off.
        value += value.empty() ? "\\s" : " ";
        break;
      default:
        value += c;
    }
  }
  return value;
}

std::string textOfEntryString(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      text += value[i];
      continue;
    }
    constexpr std::string_view kLetters = "sntr\\";
    constexpr std::string_view kMeanings = " \n\t\r\\";
    const char letter = value[++i];
    const auto at = kLetters.find(letter);
    if (at == std::string_view::npos) text += '\\';
    text += at == std::string_view::npos ? letter : kMeanings[at];
  }
  return text;
}

std::optional<std::string> execOf(std::string_view program) {
  // systemd's generator escapes these in the unit that it writes, which its manager takes
  // literally.
  constexpr std::string_view kUnreadable = "$`\\";
  if (program.find_first_of(kUnreadable) != std::string_view::npos) return std::nullopt;
  // None of these may stand in a program's name: = by the format, % because some desktops look for
  // the program before they replace %% by it, the others in systemd's units. In a word of the shell
  // all may.
  const bool needsShell = std::any_of(program.begin(), program.end(), [](char c) {
    constexpr std::string_view kForTheShell = "=%\"'\x7f";
    return (c >= 0 && c < ' ') || kForTheShell.find(c) != std::string_view::npos;
  });
  if (needsShell) {
    return entryString("/bin/sh -c " + inQuotes("exec " + shellWord(program)));
  }
  constexpr std::string_view kReserved = " ><~|&;*?#()";
  const bool isPlain = program.find_first_of(kReserved) == std::string_view::npos;
  return entryString(isPlain ? std::string(program) : inQuotes(program));
}

}  // namespace tollbeam
