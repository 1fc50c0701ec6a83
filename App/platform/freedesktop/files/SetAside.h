// Moves a damaged file out of the way without losing a byte of it.
#pragma once

#include <string>

namespace tollbeam {

/// Renames the file to "<path>.damaged", or "<path>.damaged.2" and so on when that exists: nothing
/// is overwritten. Of a symbolic link, the file that it points at is renamed in its own folder.
/// False when the file could not be renamed; it is unchanged then.
[[nodiscard]] bool setAside(const std::string& path);

}  // namespace tollbeam
