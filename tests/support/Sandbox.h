// For tests of files: a temporary folder, environment variables, and the rights of an ordinary user
// even when the suite runs as root, whom no permission stops.
#pragma once

#include <QTemporaryDir>
#include <optional>
#include <string>
#include <vector>

namespace tollbeam::test {

/// A new empty folder that an ordinary user may write to; deleted with the object.
class Folder {
 public:
  Folder();

  /// The folder's path, or that of a name in it.
  [[nodiscard]] std::string path() const;
  [[nodiscard]] std::string operator/(const std::string& name) const { return path() + '/' + name; }

  /// The names in it, sorted, hidden ones included.
  [[nodiscard]] std::vector<std::string> names() const;

 private:
  QTemporaryDir dir_;
};

/// Sets an environment variable (or removes it) until the object ends.
class Environment {
 public:
  Environment(const char* variable, const std::optional<std::string>& value);
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment();

 private:
  const char* variable_;
  std::optional<std::string> before_;
};

/// Gives up root's rights over files until the object ends; nothing happens for other users.
class OrdinaryUser {
 public:
  OrdinaryUser();
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser();

 private:
  bool wasRoot_;
};

/// The bytes of a file, read without the code under test; absent when there is none.
[[nodiscard]] std::optional<std::string> bytesOf(const std::string& path);

/// Writes the file in place, as a simple editor does.
void put(const std::string& path, const std::string& bytes);

/// Replaces the file by rename, as a careful editor does.
void putAtomically(const std::string& path, const std::string& bytes);

}  // namespace tollbeam::test
