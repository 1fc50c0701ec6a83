// The rights to a file: owner, group, mode and access control list; and the user's own extended
// attributes.
#pragma once

#include <sys/stat.h>

#include <string>

namespace tollbeam {

/// Gives the open file `fd` the attributes of the file at `from`, whose status is `old`. Best
/// effort: not every file system and not every user can set all of them. An attribute that cannot
/// be copied never gives anyone more access than the old file gave.
void copyAttributes(int fd, const std::string& from, const struct stat& old);

}  // namespace tollbeam
