#include "platform/freedesktop/files/FileAttributes.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace tollbeam {

namespace {

// The kernel's limit, for one attribute and for the list of their names.
constexpr std::size_t kLargestAttribute = 65536;

/// False when the file has the attribute and `fd` cannot have it.
bool copyAttribute(int fd, const std::string& from, const char* name) {
  std::vector<char> value(kLargestAttribute);
  const ssize_t length = ::lgetxattr(from.c_str(), name, value.data(), value.size());
  if (length >= 0) {
    return ::fsetxattr(fd, name, value.data(), static_cast<std::size_t>(length), 0) == 0;
  }
  // The folder may have given the new file one of its own.
  ::fremovexattr(fd, name);
  return true;
}

void copyUserAttributes(int fd, const std::string& from) {
  std::vector<char> names(kLargestAttribute);
  const ssize_t length = ::llistxattr(from.c_str(), names.data(), names.size());
  if (length <= 0) return;
  std::string_view rest(names.data(), static_cast<std::size_t>(length));
  while (!rest.empty()) {
    const std::string name(rest.substr(0, rest.find('\0')));
    rest.remove_prefix(name.size() + 1);
    if (name.starts_with("user.")) copyAttribute(fd, from, name.c_str());
  }
}

/// Whether the file has the old group now.
bool copyOwner(int fd, const struct stat& old) {
  struct stat status {};
  if (::fstat(fd, &status) != 0) return false;
  if (status.st_uid == old.st_uid && status.st_gid == old.st_gid) return true;
  // Only a privileged user can give files away; a member of the group can give it to the group.
  return ::fchown(fd, old.st_uid, old.st_gid) == 0 || status.st_gid == old.st_gid ||
         ::fchown(fd, static_cast<uid_t>(-1), old.st_gid) == 0;
}

}  // namespace

void copyAttributes(int fd, const std::string& from, const struct stat& old) {
  copyUserAttributes(fd, from);
  const bool hasGroup = copyOwner(fd, old);
  const bool hasAccessList = copyAttribute(fd, from, "system.posix_acl_access");
  mode_t mode = old.st_mode & 0777;
  if (!hasGroup || !hasAccessList) {
    // Those who were in the group or on the list are among the others now. With a list the group's
    // bits are the most that anyone on it gets, the group itself perhaps less.
    mode &= S_IRWXU | (mode & S_IRWXG) >> 3;
  }
  // Last, because a new owner and a new list change it.
  ::fchmod(fd, mode);
}

}  // namespace tollbeam
