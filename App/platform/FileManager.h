// Files, as far as Tollbeam's own data needs them: where they belong, whole reads, and writes that
// never leave half a file. Paths are UTF-8 (on this system: bytes as the kernel has them).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tollbeam {

class FileManager {
 public:
  FileManager() = default;
  FileManager(const FileManager&) = delete;
  FileManager& operator=(const FileManager&) = delete;
  virtual ~FileManager() = default;

  /// The folder for application data of this user, without a final slash; absent when the user has
  /// none.
  [[nodiscard]] virtual std::optional<std::string> applicationSupportDirectory() const = 0;

  /// Makes the folder and those above it. A failure is quiet: later reads and writes fail instead.
  virtual void createDirectory(const std::string& path) = 0;

  /// The whole file; absent when it does not exist or cannot be read.
  [[nodiscard]] virtual std::optional<std::string> contents(const std::string& path) const = 0;

  /// Replaces the file as a whole: the data is on the disk before it takes the name, and a reader
  /// sees the old file or the new one. Absent on success; otherwise the reason in the user's
  /// language, with the old file untouched.
  virtual std::optional<std::string> write(const std::string& path, std::string_view bytes) = 0;
};

}  // namespace tollbeam
