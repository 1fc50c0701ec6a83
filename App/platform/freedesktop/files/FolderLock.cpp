#include "platform/freedesktop/files/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace tollbeam {

FolderLock::~FolderLock() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool FolderLock::take(const std::string& folder, std::chrono::milliseconds patience) {
  constexpr auto kPause = std::chrono::milliseconds(10);
  descriptor_ = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor_ < 0) return true;
  for (auto waited = std::chrono::milliseconds(0);; waited += kPause) {
    if (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return true;
    if (errno != EWOULDBLOCK && errno != EINTR) return true;
    if (waited >= patience) return false;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace tollbeam
