#include "platform/freedesktop/application/DesktopEntry.h"

#include <algorithm>
#include <string_view>

namespace tollbeam {

namespace {

constexpr const char* kHeading = "[Desktop Entry]";

/// An argument of Exec, before the escapes of any string value.
QByteArray inQuotes(QByteArray text) {
  text.replace("%", "%%").replace("\\", "\\\\");
  text.replace("\"", "\\\"").replace("`", "\\`").replace("$", "\\$");
  return '"' + text + '"';
}

/// A text without backslashes as one word of the shell.
QByteArray shellWord(QByteArray text) { return '\'' + text.replace("'", R"('"'"')") + '\''; }

bool containsAny(const QByteArray& text, std::string_view characters) {
  return std::any_of(text.begin(), text.end(),
                     [&](char c) { return characters.find(c) != std::string_view::npos; });
}

}  // namespace

DesktopEntry desktopEntryIn(const QByteArray& file) {
  DesktopEntry entry;
  bool isInGroup = false;
  for (const QByteArray& whole : file.split('\n')) {
    const QByteArray line = whole.trimmed();
    const auto equals = line.indexOf('=');
    const QByteArray key = line.left(equals).trimmed();
    if (line.startsWith('[')) {
      isInGroup = line == kHeading;
    } else if (isInGroup && equals >= 0 && !line.startsWith('#') && !entry.contains(key)) {
      entry.insert(key, line.mid(equals + 1).trimmed());
    }
  }
  return entry;
}

QByteArray fileOf(const DesktopEntry& entry) {
  QByteArray file = QByteArray(kHeading) + '\n';
  for (auto line = entry.begin(); line != entry.end(); ++line) {
    file += line.key() + '=' + line.value() + '\n';
  }
  return file;
}

QByteArray entryString(QByteArray text) {
  text.replace("\\", "\\\\").replace("\n", "\\n").replace("\r", "\\r").replace("\t", "\\t");
  // Spaces after the equals sign would be cut off.
  return text.startsWith(' ') ? text.replace(0, 1, "\\s") : text;
}

QByteArray textOfEntryString(const QByteArray& value) {
  QByteArray text;
  for (auto c = value.begin(); c != value.end(); ++c) {
    constexpr std::string_view kLetters = "sntr\\";
    constexpr std::string_view kMeanings = " \n\t\r\\";
    const bool mayEscape = *c == '\\' && c + 1 != value.end();
    const auto at = mayEscape ? kLetters.find(*(c + 1)) : std::string_view::npos;
    text += at == std::string_view::npos ? *c : kMeanings[at];
    if (at != std::string_view::npos) ++c;
  }
  return text;
}

std::optional<QByteArray> execOf(const QByteArray& program) {
  // systemd's generator escapes these in the unit that it writes, and its manager takes the escapes
  // literally.
  if (containsAny(program, "$`\\")) return std::nullopt;
  // None of these may stand in a program's name: = by the format, % because some desktops look for
  // the program before they replace %% by it, the others in systemd's units. In a word of the shell
  // all may.
  const bool hasControls =
      std::any_of(program.begin(), program.end(), [](char c) { return c >= 0 && c < ' '; });
  if (hasControls || containsAny(program, "=%\"'\x7f")) {
    return entryString("/bin/sh -c " + inQuotes("exec " + shellWord(program)));
  }
  return entryString(containsAny(program, " ><~|&;*?#()") ? inQuotes(program) : program);
}

}  // namespace tollbeam
