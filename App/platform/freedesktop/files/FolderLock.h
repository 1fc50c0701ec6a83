// A lock on a folder that one process at a time holds. It leaves no file behind, and the kernel
// gives it up when the process ends, however it ends.
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

  /// At most once per object. False when another process holds the lock and has not ended after
  /// `patience`, which blocks the thread. True also where locks do not work: without the folder and
  /// on some network file systems.
  [[nodiscard]] bool take(const std::string& folder, std::chrono::milliseconds patience);

 private:
  int descriptor_ = -1;
};

}  // namespace tollbeam
