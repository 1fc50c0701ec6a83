#include "platform/freedesktop/files/Links.h"

#include <system_error>

namespace tollbeam {

std::optional<std::filesystem::path> linkTarget(std::filesystem::path path) {
  // As many as the kernel follows.
  constexpr int kMostLinks = 40;
  for (int i = 0; i <= kMostLinks; ++i) {
    std::error_code noLink;
    const auto next = std::filesystem::read_symlink(path, noLink);
    if (noLink) return path;
    path = path.parent_path() / next;
  }
  return std::nullopt;
}

}  // namespace tollbeam
