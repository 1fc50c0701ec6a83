#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Port.h"

namespace tollbeam {

/// One state of a file: equal to another when nothing wrote, replaced or altered the file in
/// between. The numbers have no other meaning.
using FileVersion = std::array<std::int64_t, 7>;

/// How `FileManager::write` writes.
struct WriteOptions {
  /// A new file is the user's alone unless it is a document: then it gets the mode that the user's
  /// umask gives to any. A file that exists keeps its mode.
  bool isDocument = false;
  /// When not empty, the old file is kept beside the new one, under its name with this suffix. It
  /// replaces an earlier one of that name unless that is more than twice as large.
  std::string keepOldWithSuffix = {};
};

/// Files, as far as the program's own data needs them: where they belong, whole reads, and writes
/// that never leave half a file. Paths are absolute and have the kernel's bytes. Calls return when
/// the disk has answered.
class FileManager : public Port {
 public:
  /// The folder for application data of this user, without a final slash; absent when the user has
  /// none.
  [[nodiscard]] virtual std::optional<std::string> applicationSupportDirectory() const = 0;

  /// Makes the folder and those above it, as far as they are missing, for this user alone. A
  /// failure is quiet: later reads and writes fail instead.
  virtual void createDirectory(const std::string& path) = 0;

  /// The whole file; absent when it does not exist or cannot be read.
  [[nodiscard]] virtual std::optional<std::string> contents(const std::string& path) const = 0;

  /// The file's present state; absent when it does not exist or its folder cannot be read.
  [[nodiscard]] virtual std::optional<FileVersion> version(const std::string& path) const = 0;

  /// Replaces the file as a whole: the data is on the disk before it takes the name, and a reader
  /// sees the old file or the new one. Absent on success; otherwise the reason in the user's
  /// language, with the old file untouched.
  virtual std::optional<std::string> write(const std::string& path, std::string_view bytes,
                                           const WriteOptions& options = {}) = 0;

  /// Removes the file that `write` kept under this suffix. A failure is quiet.
  virtual void removeKept(const std::string& path, const std::string& suffix) = 0;
};

}  // namespace tollbeam
