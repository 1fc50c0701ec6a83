// Desktop entry files, as far as autostart needs them: the keys of the group "Desktop Entry".
#pragma once

#include <QByteArray>
#include <QMap>
#include <optional>

namespace tollbeam {

/// Keys and raw values, without the spaces around them.
using DesktopEntry = QMap<QByteArray, QByteArray>;

/// Empty when the file has no such group. Of a key that comes twice the first counts.
[[nodiscard]] DesktopEntry desktopEntryIn(const QByteArray& file);

/// The whole file.
[[nodiscard]] QByteArray fileOf(const DesktopEntry& entry);

/// A text as a value of type string: backslashes, line ends and a leading space escaped.
[[nodiscard]] QByteArray entryString(QByteArray text);

/// The text of a value of type string; the reverse of `entryString`.
[[nodiscard]] QByteArray textOfEntryString(const QByteArray& value);

/// A program's path as a value of Exec that runs just this program without arguments. Absent when
/// no value does so on every desktop: systemd, which starts programs for some, misreads $, ` and \.
[[nodiscard]] std::optional<QByteArray> execOf(const QByteArray& program);

}  // namespace tollbeam
