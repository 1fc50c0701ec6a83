#include "platform/freedesktop/PosixFileManager.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

#include "platform/freedesktop/Links.h"
#include "platform/freedesktop/UserFolders.h"

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

/// Takes over what the old file allowed to whom. Mode last: changing the owner clears bits.
int copyAttributes(int fd, const struct stat& old) {
  if (old.st_uid != ::geteuid() || old.st_gid != ::getegid()) {
    // Best effort: only a privileged user can give files away.
    if (::fchown(fd, old.st_uid, old.st_gid) != 0) errno = 0;
  }
  return ::fchmod(fd, old.st_mode & 0777) == 0 ? 0 : errno;
}

int fillTemporary(FileDescriptor& file, std::string_view bytes, const struct stat* old) {
  if (const int error = writeAll(file.get(), bytes)) return error;
  if (old) {
    if (const int error = copyAttributes(file.get(), *old)) return error;
  }
  if (::fsync(file.get()) != 0) return errno;
  return file.close();
}

/// The name is safe only when the folder is on the disk too. Not every file system can, and the
/// new file is in place by then: a failure here is nothing that could be undone.
void syncFolder(const std::string& folder) {
  const FileDescriptor fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (fd.isOpen()) ::fsync(fd.get());
}

int replace(const std::string& target, std::string_view bytes, const struct stat* old) {
  const std::string folder = folderOf(target);
  const std::string prefix = temporaryPrefix(target);
  removeAbandoned(folder, prefix);
  std::string temporary;
  int fd = -1;
  do {
    temporary = folder + temporaryName(prefix);
    fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
  } while (fd < 0 && (errno == EEXIST || errno == EINTR));
  FileDescriptor file(fd);
  if (!file.isOpen()) return errno;

  int error = fillTemporary(file, bytes, old);
  if (error == 0 && ::rename(temporary.c_str(), target.c_str()) != 0) error = errno;
  if (error != 0) {
    ::unlink(temporary.c_str());
    return error;
  }
  syncFolder(folder);
  return 0;
}

int writeFile(const std::string& path, std::string_view bytes) {
  const auto target = linkTarget(path);
  if (!target) return ELOOP;
  struct stat old {};
  if (::lstat(target->c_str(), &old) != 0) {
    return errno == ENOENT ? replace(*target, bytes, nullptr) : errno;
  }
  if (S_ISDIR(old.st_mode)) return EISDIR;
  if (!S_ISREG(old.st_mode)) return EOPNOTSUPP;
  if (::faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0) return errno;
  return replace(*target, bytes, &old);
}

}  // namespace

std::string errorText(int error) { return std::generic_category().message(error); }

std::optional<std::string> PosixFileManager::applicationSupportDirectory() const {
  return dataHome();
}

void PosixFileManager::createDirectory(const std::string& path) {
  for (std::size_t end = path.find('/', 1); end != std::string::npos;
       end = path.find('/', end + 1)) {
    ::mkdir(path.substr(0, end).c_str(), 0700);
  }
  ::mkdir(path.c_str(), 0700);
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

std::optional<std::string> PosixFileManager::write(const std::string& path,
                                                   std::string_view bytes) {
  if (const int error = writeFile(path, bytes)) return errorText(error);
  return std::nullopt;
}

}  // namespace tollbeam
