#include "platform/freedesktop/files/SetAside.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

#include "platform/freedesktop/files/Links.h"

namespace tollbeam {

namespace {

/// 0 or the error number; EEXIST when `to` exists.
int renameToNew(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS) return errno;
  // The file system has no such call: check first. Nothing else makes files of these names.
  struct stat status {};
  if (::lstat(to.c_str(), &status) == 0) return EEXIST;
  return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

}  // namespace

bool setAside(const std::string& path) {
  constexpr int kMostDamagedFiles = 1000;
  const auto target = linkTarget(path);
  if (!target) return false;
  for (int i = 1; i <= kMostDamagedFiles; ++i) {
    const std::string suffix = i == 1 ? ".damaged" : ".damaged." + std::to_string(i);
    const int error = renameToNew(*target, target->string() + suffix);
    if (error != EEXIST) return error == 0;
  }
  return false;
}

}  // namespace tollbeam
