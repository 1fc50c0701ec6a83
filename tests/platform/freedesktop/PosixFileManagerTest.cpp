#include "platform/freedesktop/PosixFileManager.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <functional>

#include "platform/freedesktop/support/Sandbox.h"

namespace tollbeam {

namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::Folder;
using test::put;
using Names = std::vector<std::string>;

unsigned modeOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

/// Runs `work` in a process of its own and answers with its result.
int inChild(const std::function<int()>& work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work());
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Gives this process mounts that nobody else sees, by a user namespace for who is not root; false
/// where the system forbids it.
bool takeOwnMounts() {
  const uid_t user = ::geteuid();
  const gid_t group = ::getegid();
  if (::unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  if (user != 0) {
    // Who has no name in the namespace could not make a file.
    put("/proc/self/uid_map", "0 " + std::to_string(user) + " 1\n");
    put("/proc/self/setgroups", "deny");
    put("/proc/self/gid_map", "0 " + std::to_string(group) + " 1\n");
  }
  return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// Kills a write to a file of this name in its middle; the name of what it leaves behind.
std::string leftByAKilledWrite(const Folder& folder, const std::string& name) {
  const std::string bytes(3'000'000, 'n');
  put(folder / name, "old");
  const Names before = folder.names();
  while (true) {
    const pid_t child = ::fork();
    if (child == 0) {
      while (true) PosixFileManager().write(folder / name, bytes);
    }
    while (folder.names() == before) ::sched_yield();
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    for (const auto& each : folder.names()) {
      if (std::find(before.begin(), before.end(), each) == before.end()) return each;
    }
  }
}

/// Makes a file, or a link itself, look as old as this.
void age(const std::string& path, std::time_t seconds) {
  const timespec then{.tv_sec = std::time(nullptr) - seconds, .tv_nsec = 0};
  const std::array<timespec, 2> times{then, then};
  ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
}

/// Lets no file grow beyond `bytes`, which fails a write in its middle for every user.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, signal_);
  }

 private:
  rlimit before_{};
  void (*signal_)(int);
};

class Umask {
 public:
  explicit Umask(mode_t mask) : before_(::umask(mask)) {}
  Umask(const Umask&) = delete;
  Umask& operator=(const Umask&) = delete;
  ~Umask() { ::umask(before_); }

 private:
  mode_t before_;
};

}  // namespace

TEST(PosixFileManager, ReadsBackWhatItWrote) {
  const Folder folder;
  PosixFileManager files;
  for (const std::string& bytes : {std::string(), std::string("text\n"),
                                   std::string("\0\xff\n\r", 4), std::string(5'000'000, 'x')}) {
    EXPECT_EQ(files.write(folder / "file", bytes), std::nullopt);
    EXPECT_EQ(files.contents(folder / "file"), bytes);
    EXPECT_EQ(folder.names(), Names{"file"});
  }
}

TEST(PosixFileManager, ReadsOnlyFiles) {
  const Folder folder;
  PosixFileManager files;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(files.contents(folder / "nothing"), std::nullopt);
  EXPECT_EQ(files.contents(folder.path()), std::nullopt);
  EXPECT_EQ(files.contents(folder / "pipe"), std::nullopt);
  EXPECT_EQ(files.contents("/dev/zero"), std::nullopt);
}

TEST(PosixFileManager, ReadsFilesThatTheKernelMakesUp) {
  // Their size is told as 0.
  const auto text = PosixFileManager().contents("/proc/self/status");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->substr(0, 5), "Name:");
}

TEST(PosixFileManager, DoesNotReadAFileOfGigabytes) {
  const Folder folder;
  put(folder / "file", "");
  ASSERT_EQ(::truncate((folder / "file").c_str(), (off_t{256} << 20) + 1), 0);
  EXPECT_EQ(PosixFileManager().contents(folder / "file"), std::nullopt);
}

TEST(PosixFileManager, NewFilesFollowTheUmask) {
  const Folder folder;
  const Umask umask(027);
  PosixFileManager().write(folder / "file", "x");
  EXPECT_EQ(modeOf(folder / "file"), 0640U);
}

TEST(PosixFileManager, AReplacedFileKeepsItsMode) {
  const Folder folder;
  for (const unsigned mode : {0600U, 0644U, 0666U}) {
    put(folder / "file", "old");
    ::chmod((folder / "file").c_str(), mode);
    EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), std::nullopt);
    EXPECT_EQ(modeOf(folder / "file"), mode);
    EXPECT_EQ(bytesOf(folder / "file"), "new");
  }
}

TEST(PosixFileManager, NewFoldersAreTheUsersAlone) {
  const Folder folder;
  PosixFileManager files;
  files.createDirectory(folder / "a/b/c");
  EXPECT_EQ(modeOf(folder / "a"), 0700U);
  EXPECT_EQ(modeOf(folder / "a/b/c"), 0700U);
  EXPECT_EQ(files.write(folder / "a/b/c/file", "x"), std::nullopt);
  files.createDirectory(folder / "a/b/c");
  EXPECT_EQ(files.contents(folder / "a/b/c/file"), "x");
}

TEST(PosixFileManager, WritesWhatALinkPointsAt) {
  const Folder folder;
  PosixFileManager files;
  fs::create_directory(folder / "elsewhere");
  put(folder / "elsewhere/file", "old");
  fs::create_symlink("elsewhere/file", folder / "relative");
  fs::create_symlink(folder / "relative", folder / "chain");
  EXPECT_EQ(files.write(folder / "chain", "new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder / "chain"));
  EXPECT_TRUE(fs::is_symlink(folder / "relative"));
  EXPECT_EQ(bytesOf(folder / "elsewhere/file"), "new");
}

TEST(PosixFileManager, MakesTheFileThatADanglingLinkPointsAt) {
  const Folder folder;
  fs::create_symlink("target", folder / "link");
  EXPECT_EQ(PosixFileManager().write(folder / "link", "new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(bytesOf(folder / "target"), "new");
}

TEST(PosixFileManager, TellsWhyItCouldNotWrite) {
  const Folder folder;
  PosixFileManager files;
  fs::create_directory(folder / "folder");
  fs::create_symlink("circle", folder / "circle");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  const Names before = folder.names();
  EXPECT_EQ(files.write(folder / "missing/file", "x"), "No such file or directory");
  EXPECT_EQ(files.write(folder / "folder", "x"), "Is a directory");
  EXPECT_EQ(files.write(folder / "circle", "x"), "Too many levels of symbolic links");
  EXPECT_EQ(files.write(folder / "pipe", "x"), "Operation not supported");
  EXPECT_EQ(files.write(folder / std::string(300, 'n'), "x"), "File name too long");
  EXPECT_EQ(folder.names(), before);
}

TEST(PosixFileManager, ALongNameLeavesRoomForTheTemporaryFile) {
  const Folder folder;
  EXPECT_EQ(PosixFileManager().write(folder / std::string(255, 'n'), "x"), std::nullopt);
}

TEST(PosixFileManager, AReadOnlyFolderKeepsTheOldFile) {
  const Folder folder;
  put(folder / "file", "old");
  ::chmod((folder / "file").c_str(), 0666);
  ::chmod(folder.path().c_str(), 0555);
  {
    const test::OrdinaryUser user;
    EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), "Permission denied");
  }
  ::chmod(folder.path().c_str(), 0777);
  EXPECT_EQ(bytesOf(folder / "file"), "old");
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(PosixFileManager, AProtectedFileIsNotReplaced) {
  const Folder folder;
  put(folder / "file", "old");
  ::chmod((folder / "file").c_str(), 0444);
  const test::OrdinaryUser user;
  EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), "Permission denied");
  EXPECT_EQ(bytesOf(folder / "file"), "old");
}

TEST(PosixFileManager, AWriteThatFailsInItsMiddleLeavesNothingBehind) {
  const Folder folder;
  put(folder / "file", "old");
  {
    const FileSizeLimit limit(64 * 1024);
    EXPECT_EQ(PosixFileManager().write(folder / "file", std::string(1 << 20, 'n')),
              "File too large");
  }
  EXPECT_EQ(bytesOf(folder / "file"), "old");
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(PosixFileManager, AFullDiskKeepsTheOldFile) {
  const Folder folder;
  constexpr int kCannotMount = 77;
  // A disk of its own in a process of its own, which nobody else sees.
  const int result = inChild([&] {
    if (!takeOwnMounts() || ::mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=64k") != 0) {
      return kCannotMount;
    }
    put(folder / "file", "old");
    const auto reason = PosixFileManager().write(folder / "file", std::string(1 << 20, 'n'));
    if (reason != "No space left on device") return 1;
    if (bytesOf(folder / "file") != "old") return 2;
    return folder.names() == Names{"file"} ? 0 : 3;
  });
  if (result == kCannotMount) GTEST_SKIP() << "this user may not mount a small disk";
  EXPECT_EQ(result, 0);
}

TEST(PosixFileManager, AWriteRemovesWhatAKilledOneLeftADayAgo) {
  const Folder folder;
  const std::string recent = leftByAKilledWrite(folder, "file");
  const std::string old = leftByAKilledWrite(folder, "file");
  const std::string ofAnother = leftByAKilledWrite(folder, "other");
  const std::string alike = old + "x";
  const std::string link = std::string(old).replace(old.size() - 12, 8, "01234567");
  put(folder / alike, "somebody's");
  fs::create_symlink(alike, folder / link);
  for (const auto& name : {old, ofAnother, alike, link}) age(folder / name, 25 * 60 * 60);
  age(folder / recent, 23 * 60 * 60);
  EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), std::nullopt);
  Names left{recent, ofAnother, alike, link, "file", "other"};
  std::sort(left.begin(), left.end());
  EXPECT_EQ(folder.names(), left);
}

TEST(PosixFileManager, AFolderThatCannotBeListedCanBeWrittenTo) {
  const Folder folder;
  ::chmod(folder.path().c_str(), 0333);
  {
    const test::OrdinaryUser user;
    EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), std::nullopt);
  }
  ::chmod(folder.path().c_str(), 0777);
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(PosixFileManager, WhoIsKilledWhileWritingLeavesTheOldFileWhole) {
  const Folder folder;
  const std::string text(3'000'000, 'o');
  put(folder / "file", text);
  const std::string newText(3'000'000, 'n');
  int killedInTheMiddle = 0;
  for (int i = 0; i < 30; ++i) {
    const pid_t child = ::fork();
    if (child == 0) {
      while (true) PosixFileManager().write(folder / "file", newText);
    }
    while (folder.names().size() == 1) ::sched_yield();
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    const auto left = bytesOf(folder / "file");
    ASSERT_TRUE(left == text || left == newText) << "half a file of " << left->size();
    for (const auto& name : folder.names()) {
      if (name == "file") continue;
      ++killedInTheMiddle;
      fs::remove(folder / name);
    }
  }
  EXPECT_GT(killedInTheMiddle, 0);
}

TEST(PosixFileManager, AReaderNeverSeesHalfAFile) {
  const Folder folder;
  const std::string one(1'000'000, '1');
  const std::string two(2'000'000, '2');
  put(folder / "file", one);
  const pid_t child = ::fork();
  if (child == 0) {
    while (true) {
      PosixFileManager().write(folder / "file", two);
      PosixFileManager().write(folder / "file", one);
    }
  }
  int changes = 0;
  std::optional<std::string> last = one;
  while (changes < 10) {
    const auto seen = PosixFileManager().contents(folder / "file");
    const bool whole = seen == one || seen == two;
    EXPECT_TRUE(whole);
    if (!whole) break;
    changes += seen != last;
    last = seen;
  }
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

}  // namespace tollbeam
