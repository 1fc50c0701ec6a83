// A lock on a folder, held by one process at a time. It leaves no file behind, and the kernel
// releases it when the process ends, however it ends.
#pragma once

#include <chrono>
#include <string>

namespace tollbeam {

class FolderLock {
 public:
  FolderLock() = default;
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock();

  /// At most once per object; blocks the thread for up to `patience` while another process holds
  /// the lock, and is false when that one still holds it then. True also where locks do not work:
  /// without the folder and on some network file systems.
  [[nodiscard]] bool take(const std::string& folder, std::chrono::milliseconds patience);

 private:
  int descriptor_ = -1;
};

}  // namespace tollbeam
