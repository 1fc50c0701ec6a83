#include "platform/freedesktop/files/PosixFileManager.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/freedesktop/files/FileAttributes.h"
#include "platform/freedesktop/files/Links.h"
#include "platform/freedesktop/files/UserFolders.h"

namespace tollbeam {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = std::size_t{256} << 20;

constexpr std::string_view kTemporarySuffix = ".tmp";

// Seconds. A day: no write takes so long, even where two machines share the folder.
constexpr std::time_t kLongestWrite = std::time_t{24} * 60 * 60;

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }

  [[nodiscard]] bool isOpen() const { return fd_ >= 0; }
  [[nodiscard]] int get() const { return fd_; }

  /// 0 or the error number. Some network file systems report a full disk only here.
  int close() { return ::close(std::exchange(fd_, -1)) == 0 || errno == EINTR ? 0 : errno; }

 private:
  int fd_;
};

int writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return errno;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

/// How the names of the temporary files for this target begin. The target's own name is in it as a
/// hash (FNV-1a), because it may have the greatest length already.
std::string temporaryPrefix(const fs::path& target) {
  std::uint32_t hash = 2166136261;
  for (const char c : target.filename().string())
    hash = (hash ^ static_cast<unsigned char>(c)) * 16777619;
  std::array<char, 32> prefix{};
  std::snprintf(prefix.data(), prefix.size(), ".tollbeam-%08x-", hash);
  return prefix.data();
}

std::string temporaryName(const std::string& prefix) {
  std::random_device random;
  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), "%08x", random());
  return prefix + number.data() + std::string(kTemporarySuffix);
}

/// Whether this is a temporary file whose writer must have been killed.
bool isAbandoned(const fs::path& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         status.st_uid == ::geteuid() && ::time(nullptr) - status.st_mtime > kLongestWrite;
}

/// Of this target only: other files in the folder are not ours.
void removeAbandoned(const fs::path& folder, const std::string& prefix) {
  const std::size_t length = temporaryName(prefix).size();
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const std::string name = entry->path().filename();
    if (name.size() == length && name.starts_with(prefix) && name.ends_with(kTemporarySuffix) &&
        isAbandoned(entry->path())) {
      ::unlink(entry->path().c_str());
    }
  }
}

/// The file that a write replaces, at the end of the links.
struct Target {
  fs::path path;
  /// Absent when no file is there yet.
  std::optional<struct stat> old;
};

int fillTemporary(FileDescriptor& file, std::string_view bytes, const Target& target,
                  const WriteOptions& options) {
  if (const int error = writeAll(file.get(), bytes)) return error;
  if (target.old && options.keepOldWithSuffix.empty()) {
    copyAttributes(file.get(), target.path, *target.old);
  } else if (!options.isDocument) {
    // What the umask took away.
    ::fchmod(file.get(), S_IRUSR | S_IWUSR);
  }
  if (::fsync(file.get()) != 0) return errno;
  return file.close();
}

/// Whether the old file may replace the one that is kept already, which is worth more when it is
/// more than twice as large.
bool isWorthKeeping(const struct stat& old, const std::string& kept) {
  struct stat status {};
  return ::lstat(kept.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
         status.st_size / 2 <= old.st_size;
}

/// Gives the file a second name, so that it never lacks the first. Where a file system has no
/// second names, and for files of others, it only gets the other name.
int keepAs(const std::string& kept, const fs::path& path) {
  if (::unlink(kept.c_str()) != 0 && errno != ENOENT) return errno;
  if (::link(path.c_str(), kept.c_str()) == 0) return 0;
  return ::rename(path.c_str(), kept.c_str()) == 0 ? 0 : errno;
}

int putInPlace(const fs::path& temporary, const Target& target, const std::string& suffix) {
  const std::string kept = target.path.string() + suffix;
  const bool keepsOld = target.old && !suffix.empty() && isWorthKeeping(*target.old, kept);
  if (keepsOld) {
    if (const int error = keepAs(kept, target.path)) return error;
  }
  if (::rename(temporary.c_str(), target.path.c_str()) == 0) return 0;
  const int error = errno;
  // Renaming a file to its other name does nothing.
  if (keepsOld && ::rename(kept.c_str(), target.path.c_str()) == 0) ::unlink(kept.c_str());
  return error;
}

int replace(const Target& target, std::string_view bytes, const WriteOptions& options) {
  const fs::path folder = target.path.has_parent_path() ? target.path.parent_path() : ".";
  const std::string prefix = temporaryPrefix(target.path);
  removeAbandoned(folder, prefix);
  // Users who could not read the old bytes must not read the new ones, not even for a moment.
  const mode_t mode = options.isDocument && !target.old ? 0666 : 0600;
  fs::path temporary;
  int fd = -1;
  do {
    temporary = folder / temporaryName(prefix);
    fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
  } while (fd < 0 && (errno == EEXIST || errno == EINTR));
  FileDescriptor file(fd);
  if (!file.isOpen()) return errno;

  int error = fillTemporary(file, bytes, target, options);
  if (error == 0) error = putInPlace(temporary, target, options.keepOldWithSuffix);
  if (error != 0) {
    ::unlink(temporary.c_str());
    return error;
  }
  // The name is safe only when the folder is on the disk too. Not every file system can do this,
  // and a failure could not be undone: the new file is in place by now.
  const FileDescriptor entries(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (entries.isOpen()) ::fsync(entries.get());
  return 0;
}

int writeFile(const std::string& path, std::string_view bytes, const WriteOptions& options) {
  const auto end = linkTarget(path);
  if (!end) return ELOOP;
  Target target{*end, std::nullopt};
  struct stat old {};
  if (::lstat(end->c_str(), &old) == 0) {
    if (S_ISDIR(old.st_mode)) return EISDIR;
    if (!S_ISREG(old.st_mode)) return EOPNOTSUPP;
    // Keeping a file takes no right to write it.
    if (options.keepOldWithSuffix.empty() &&
        ::faccessat(AT_FDCWD, end->c_str(), W_OK, AT_EACCESS) != 0) {
      return errno;
    }
    target.old = old;
  } else if (errno != ENOENT) {
    return errno;
  }
  return replace(target, bytes, options);
}

}  // namespace

std::string errorText(int error) { return std::generic_category().message(error); }

PosixFileManager::PosixFileManager() { std::signal(SIGXFSZ, SIG_IGN); }

std::optional<std::string> PosixFileManager::applicationSupportDirectory() const {
  return dataHome();
}

void PosixFileManager::createDirectory(const std::string& path) {
  fs::path folder;
  for (const fs::path& name : fs::path(path)) {
    folder /= name;
    // The second call sets what the umask took away.
    if (::mkdir(folder.c_str(), 0700) == 0) ::chmod(folder.c_str(), 0700);
  }
}

std::optional<std::string> PosixFileManager::contents(const std::string& path) const {
  // Not blocking: opening a pipe would wait for its writer.
  const FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!fd.isOpen() || ::fstat(fd.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  // The size is only a hint: the kernel's own files have 0, and a file may grow meanwhile.
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > kLargestFile) return std::nullopt;
  std::string bytes;
  bytes.reserve(size);
  std::vector<char> part(std::size_t{64} << 10);
  while (bytes.size() <= kLargestFile) {
    const ssize_t got = ::read(fd.get(), part.data(), part.size());
    if (got == 0) return bytes;
    if (got > 0) bytes.append(part.data(), static_cast<std::size_t>(got));
    if (got < 0 && errno != EINTR) break;
  }
  return std::nullopt;
}

std::optional<FileVersion> PosixFileManager::version(const std::string& path) const {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return FileVersion{static_cast<std::int64_t>(status.st_dev),
                     static_cast<std::int64_t>(status.st_ino),
                     status.st_size,
                     status.st_mtim.tv_sec,
                     status.st_mtim.tv_nsec,
                     status.st_ctim.tv_sec,
                     status.st_ctim.tv_nsec};
}

std::optional<std::string> PosixFileManager::write(const std::string& path, std::string_view bytes,
                                                   const WriteOptions& options) {
  if (const int error = writeFile(path, bytes, options)) return errorText(error);
  return std::nullopt;
}

void PosixFileManager::removeKept(const std::string& path, const std::string& suffix) {
  if (const auto end = linkTarget(path)) ::unlink((end->string() + suffix).c_str());
}

}  // namespace tollbeam
