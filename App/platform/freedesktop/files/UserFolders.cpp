#include "platform/freedesktop/files/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <sstream>
#include <string_view>

namespace tollbeam {

namespace {

std::optional<std::string> absolutePath(const char* text) {
  std::string_view path = text ? text : "";
  if (!path.starts_with('/')) return std::nullopt;
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  return std::string(path);
}

std::optional<std::string> folder(const char* variable, const char* belowHome) {
  if (auto path = absolutePath(std::getenv(variable))) return path;
  if (const auto home = homeFolder()) return (*home == "/" ? "" : *home) + belowHome;
  return std::nullopt;
}

}  // namespace

std::optional<std::string> homeFolder() {
  if (auto home = absolutePath(std::getenv("HOME"))) return home;
  const passwd* user = ::getpwuid(::getuid());
  return user ? absolutePath(user->pw_dir) : std::nullopt;
}

std::optional<std::string> dataHome() { return folder("XDG_DATA_HOME", "/.local/share"); }

std::optional<std::string> configHome() { return folder("XDG_CONFIG_HOME", "/.config"); }

std::vector<std::string> configDirs() {
  const char* variable = std::getenv("XDG_CONFIG_DIRS");
  std::istringstream entries(variable && *variable ? variable : "/etc/xdg");
  std::vector<std::string> folders;
  for (std::string entry; std::getline(entries, entry, ':');) {
    if (auto path = absolutePath(entry.c_str())) folders.push_back(std::move(*path));
  }
  return folders;
}

}  // namespace tollbeam
