// Files through the POSIX calls. A write goes to a new file beside the old one, which takes its
// name once every byte is on the disk: whoever reads, and whatever kills us, meets one or the
// other. What a killed write leaves behind, a write to the same file removes a day later.
//
// An existing file keeps its mode, and a symbolic link keeps pointing: what it points at is
// replaced. A new file gets the mode that the user's umask gives to any document, because exports
// are documents; our own data is kept private by its folder, which createDirectory makes for the
// user alone.
#pragma once

#include <string>

#include "platform/FileManager.h"

namespace tollbeam {

class PosixFileManager final : public FileManager {
 public:
  [[nodiscard]] std::optional<std::string> applicationSupportDirectory() const override;
  void createDirectory(const std::string& path) override;

  /// Regular files only, and none above 256 MiB: ours are a thousand times smaller.
  [[nodiscard]] std::optional<std::string> contents(const std::string& path) const override;

  /// A file that the user may not write is not replaced, even where the folder would allow it.
  std::optional<std::string> write(const std::string& path, std::string_view bytes) override;
};

/// What an error number means, in the user's language.
[[nodiscard]] std::string errorText(int error);

}  // namespace tollbeam
