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

#include "platform/freedesktop/files/FileAttributes.h"
#include "platform/freedesktop/files/Links.h"
#include "platform/freedesktop/files/UserFolders.h"

namespace tollbeam {

namespace {

constexpr std::size_t kLargestFile = std::size_t{256} << 20;

constexpr std::string_view kTemporarySuffix = ".tmp";

// A day: nobody is still writing then, even where two machines share the folder.
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

/// How the temporary files for this target begin. Its name is in it as a hash (FNV-1a), because the
/// name itself may fill the limit.
std::string temporaryPrefix(const std::string& target) {
  std::uint32_t hash = 2166136261;
  for (const char c : nameOf(target)) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619;
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

/// Whether a temporary file lies there whose writer must have been killed.
bool isAbandoned(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         status.st_uid == ::geteuid() && ::time(nullptr) - status.st_mtime > kLongestWrite;
}

/// Of this target only: what else is in the folder may be anybody's.
void removeAbandoned(const std::string& folder, const std::string& prefix) {
  const std::size_t length = temporaryName(prefix).size();
  std::error_code error;
  std::filesystem::directory_iterator entry(folder, error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.size() == length && name.starts_with(prefix) && name.ends_with(kTemporarySuffix) &&
        isAbandoned(folder + name)) {
      ::unlink((folder + name).c_str());
    }
  }
}

/// The file that a write replaces, at the end of the links.
struct Target {
  std::string path;
  /// Absent when no file is there yet.
  std::optional<struct stat> old;
};

int fillTemporary(FileDescriptor& file, std::string_view bytes, const Target& target,
                  const WriteOptions& options) {
  if (const int error = writeAll(file.get(), bytes)) return error;
  if (target.old && options.keepOldWithSuffix.empty()) {
    copyAttributes(file.get(), target.path, *target.old);
  } else if (!options.isDocument) {
    // Whatever the umask took away.
    ::fchmod(file.get(), S_IRUSR | S_IWUSR);
  }
  if (::fsync(file.get()) != 0) return errno;
  return file.close();
}

/// Whether the file is worth more than what is already kept: a copy that is more than twice as
/// large has lost less.
bool isWorthKeeping(const struct stat& old, const std::string& kept) {
  struct stat status {};
  return ::lstat(kept.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
         status.st_size / 2 <= old.st_size;
}

/// Gives the file a second name, so that it never lacks the first. Where a file system has no
/// second names, and for files of others, it only gets the other name.
int keepAs(const std::string& kept, const std::string& path) {
  if (::unlink(kept.c_str()) != 0 && errno != ENOENT) return errno;
  if (::link(path.c_str(), kept.c_str()) == 0) return 0;
  return ::rename(path.c_str(), kept.c_str()) == 0 ? 0 : errno;
}

int putInPlace(const std::string& temporary, const Target& target, const std::string& suffix) {
  const std::string kept = target.path + suffix;
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

/// The name is safe only when the folder is on the disk too. Not every file system can, and the
/// new file is in place by then: a failure here is nothing that could be undone.
void syncFolder(const std::string& folder) {
  const FileDescriptor fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (fd.isOpen()) ::fsync(fd.get());
}

int replace(const Target& target, std::string_view bytes, const WriteOptions& options) {
  const std::string folder = folderOf(target.path);
  const std::string prefix = temporaryPrefix(target.path);
  removeAbandoned(folder, prefix);
  // Nobody may read the new bytes who could not read the old ones, not even for a moment.
  const mode_t mode = options.isDocument && !target.old ? 0666 : 0600;
  std::string temporary;
  int fd = -1;
  do {
    temporary = folder + temporaryName(prefix);
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
  syncFolder(folder);
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
    // A file that is kept loses nothing.
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

/// As its owner's alone, whatever the umask takes away.
void makeFolder(const std::string& path) {
  if (::mkdir(path.c_str(), 0700) == 0) ::chmod(path.c_str(), 0700);
}

}  // namespace

std::string errorText(int error) { return std::generic_category().message(error); }

PosixFileManager::PosixFileManager() { std::signal(SIGXFSZ, SIG_IGN); }

std::optional<std::string> PosixFileManager::applicationSupportDirectory() const {
  return dataHome();
}

void PosixFileManager::createDirectory(const std::string& path) {
  for (std::size_t end = path.find('/', 1); end != std::string::npos;
       end = path.find('/', end + 1)) {
    makeFolder(path.substr(0, end));
  }
  makeFolder(path);
}

std::optional<std::string> PosixFileManager::contents(const std::string& path) const {
  // Not blocking: a pipe of that name would hold us for ever.
  const FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!fd.isOpen() || ::fstat(fd.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  if (status.st_size > static_cast<off_t>(kLargestFile)) return std::nullopt;
  std::string bytes;
  bytes.resize(static_cast<std::size_t>(status.st_size) + 1);
  std::size_t length = 0;
  while (true) {
    const ssize_t got = ::read(fd.get(), bytes.data() + length, bytes.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return std::nullopt;
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
    if (length > kLargestFile) return std::nullopt;
    // Full: the file grew while we read it.
    if (length == bytes.size()) bytes.resize(2 * bytes.size());
  }
  bytes.resize(length);
  return bytes;
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
  if (const auto end = linkTarget(path)) ::unlink((*end + suffix).c_str());
}

}  // namespace tollbeam
