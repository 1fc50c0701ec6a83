// Files through the POSIX calls. A write goes to a new file beside the old one, which takes its
// name once every byte is on the disk: a reader, and a program that was killed, find one or the
// other. The temporary file of a killed write is removed by a write to the same file a day later.
//
// An existing file keeps its owner, mode and other attributes as far as we may set them. Of a
// symbolic link the file that it points at is replaced. Only the user can read a temporary file
// that replaces another.
#pragma once

#include <string>

#include "platform/FileManager.h"

namespace tollbeam {

class PosixFileManager final : public FileManager {
 public:
  /// From now on a file that grows too large fails a write like any other error, instead of ending
  /// the process by SIGXFSZ.
  PosixFileManager();

  [[nodiscard]] std::optional<std::string> applicationSupportDirectory() const override;
  void createDirectory(const std::string& path) override;

  /// Regular files only, and none above 256 MiB: ours are a thousand times smaller.
  [[nodiscard]] std::optional<std::string> contents(const std::string& path) const override;

  [[nodiscard]] std::optional<FileVersion> version(const std::string& path) const override;

  /// A file that the user may not write is not replaced, even where the folder would allow it,
  /// unless it is kept. Of a link, the file that it points at is kept, in its own folder.
  std::optional<std::string> write(const std::string& path, std::string_view bytes,
                                   const WriteOptions& options = {}) override;

  void removeKept(const std::string& path, const std::string& suffix) override;
};

/// What an error number means, in the user's language.
[[nodiscard]] std::string errorText(int error);

}  // namespace tollbeam
