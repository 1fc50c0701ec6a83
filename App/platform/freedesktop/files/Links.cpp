#include "platform/freedesktop/files/Links.h"

#include <unistd.h>

#include <array>
#include <climits>

namespace tollbeam {

namespace {

// As many as the kernel follows.
constexpr int kMostLinks = 40;

}  // namespace

std::string folderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

std::string withoutFinalSlash(std::string folder) {
  if (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
  return folder;
}

std::string nameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::optional<std::string> nextLink(const std::string& path) {
  std::array<char, PATH_MAX> text{};
  const ssize_t length = ::readlink(path.c_str(), text.data(), text.size());
  if (length <= 0) return std::nullopt;
  std::string target(text.data(), static_cast<std::size_t>(length));
  return target.starts_with('/') ? target : folderOf(path) + target;
}

std::optional<std::string> linkTarget(std::string path) {
  for (int i = 0; i <= kMostLinks; ++i) {
    auto next = nextLink(path);
    if (!next) return path;
    path = std::move(*next);
  }
  return std::nullopt;
}

}  // namespace tollbeam
