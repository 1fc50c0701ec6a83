// Symbolic links at the end of a path. A link that people made is theirs: a file behind it is
// replaced where it is, and the link stays.
#pragma once

#include <filesystem>
#include <optional>

namespace tollbeam {

/// The path at the end of the links, whether a file is there or not; absent when they go in a
/// circle.
[[nodiscard]] std::optional<std::filesystem::path> linkTarget(std::filesystem::path path);

}  // namespace tollbeam
