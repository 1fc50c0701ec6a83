// Paths and the symbolic links at their end. A link that people made is theirs: whoever replaces a
// file replaces what the link points at.
#pragma once

#include <optional>
#include <string>

namespace tollbeam {

/// The folder part of a path, with its final slash; "./" when there is none.
[[nodiscard]] std::string folderOf(const std::string& path);

/// The folder without its final slash, unless it is the root.
[[nodiscard]] std::string withoutFinalSlash(std::string folder);

/// The part after the last slash.
[[nodiscard]] std::string nameOf(const std::string& path);

/// What the link at `path` names, one step only; absent when there is no link.
[[nodiscard]] std::optional<std::string> nextLink(const std::string& path);

/// The path at the end of the links, whether a file is there or not; absent when they go in a
/// circle.
[[nodiscard]] std::optional<std::string> linkTarget(std::string path);

}  // namespace tollbeam
