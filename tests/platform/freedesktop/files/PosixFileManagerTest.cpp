#include "platform/freedesktop/files/PosixFileManager.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <functional>
#include <thread>
#include <utility>

#include "support/Sandbox.h"

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

constexpr const char* kAccessList = "system.posix_acl_access";

std::optional<std::string> attributeOf(const std::string& path, const char* name) {
  std::string value(4096, '\0');
  const ssize_t length = ::getxattr(path.c_str(), name, value.data(), value.size());
  if (length < 0) return std::nullopt;
  value.resize(static_cast<std::size_t>(length));
  return value;
}

/// Adds the user "nobody" to the file's access list; false where the file system has none.
bool allowNobodyToRead(const std::string& path) {
  struct Entry {
    std::uint16_t tag;
    std::uint16_t rights;
    std::uint32_t id;
  };
  constexpr std::uint32_t kNobody = 65534;
  // As the kernel takes it: owner, that user, group, mask, others.
  const struct {
    std::uint32_t version = 2;
    std::array<Entry, 5> entries{
        {{1, 6, ~0U}, {2, 4, kNobody}, {4, 0, ~0U}, {16, 4, ~0U}, {32, 0, ~0U}}};
  } list;
  return ::setxattr(path.c_str(), kAccessList, &list, sizeof list, 0) == 0;
}

/// Runs `work` in a child process. Its result, or -1 when the process was killed.
int inChild(const std::function<int()>& work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work());
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Gives this process private mounts, by a user namespace unless it is root's; false where the
/// system forbids it.
bool takeOwnMounts() {
  const uid_t user = ::geteuid();
  const gid_t group = ::getegid();
  if (::unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
  if (user != 0) {
    // A user without a name in the namespace could not make a file.
    put("/proc/self/uid_map", "0 " + std::to_string(user) + " 1\n");
    put("/proc/self/setgroups", "deny");
    put("/proc/self/gid_map", "0 " + std::to_string(group) + " 1\n");
  }
  return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

/// Kills a write to a file of this name before its end. The name of the temporary file it leaves.
std::string leftByAKilledWrite(const Folder& folder, const std::string& name,
                               const WriteOptions& options = {}) {
  const std::string bytes(3'000'000, 'n');
  put(folder / name, "old");
  ::chmod((folder / name).c_str(), 0600);
  const Names before = folder.names();
  while (true) {
    const pid_t child = ::fork();
    if (child == 0) {
      while (true) PosixFileManager().write(folder / name, bytes, options);
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
  explicit FileSizeLimit(rlim_t bytes) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_{};
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

TEST(PosixFileManager, ReadsOnlyRegularFiles) {
  const Folder folder;
  PosixFileManager files;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(files.contents(folder / "nothing"), std::nullopt);
  EXPECT_EQ(files.contents(folder.path()), std::nullopt);
  EXPECT_EQ(files.contents(folder / "pipe"), std::nullopt);
  EXPECT_EQ(files.contents("/dev/zero"), std::nullopt);
}

TEST(PosixFileManager, ReadsFilesOfTheKernelWhoseSizeIsZero) {
  const auto text = PosixFileManager().contents("/proc/self/status");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->substr(0, 5), "Name:");
}

TEST(PosixFileManager, ReadsNoFileAbove256MiB) {
  const Folder folder;
  put(folder / "file", "");
  ASSERT_EQ(::truncate((folder / "file").c_str(), (off_t{256} << 20) + 1), 0);
  EXPECT_EQ(PosixFileManager().contents(folder / "file"), std::nullopt);
}

TEST(PosixFileManager, MakesNewFilesForTheUserAloneWhateverTheUmask) {
  const Folder folder;
  for (const mode_t mask : {0000, 0022, 0077, 0377, 0777}) {
    const Umask umask(mask);
    fs::remove(folder / "file");
    EXPECT_EQ(PosixFileManager().write(folder / "file", "x"), std::nullopt);
    EXPECT_EQ(modeOf(folder / "file"), 0600U) << std::oct << mask;
  }
}

TEST(PosixFileManager, MakesNewDocumentsByTheUmask) {
  const Folder folder;
  for (const mode_t mask : {0000, 0022, 0027, 0077}) {
    const Umask umask(mask);
    fs::remove(folder / "file");
    PosixFileManager().write(folder / "file", "x", {.isDocument = true});
    EXPECT_EQ(modeOf(folder / "file"), 0666U & ~mask);
  }
}

TEST(PosixFileManager, TheReplacementOfAPrivateFileIsPrivateFromItsCreation) {
  const Folder folder;
  const Umask umask(0);
  for (const bool isDocument : {false, true}) {
    const std::string left = leftByAKilledWrite(folder, "file", {.isDocument = isDocument});
    EXPECT_EQ(modeOf(folder / left), 0600U);
  }
}

TEST(PosixFileManager, KeepsTheModeOfAReplacedFile) {
  const Folder folder;
  for (const unsigned mode : {0600U, 0644U, 0666U}) {
    put(folder / "file", "old");
    ::chmod((folder / "file").c_str(), mode);
    EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), std::nullopt);
    EXPECT_EQ(modeOf(folder / "file"), mode);
    EXPECT_EQ(bytesOf(folder / "file"), "new");
  }
}

TEST(PosixFileManager, KeepsTheAttributesOfAReplacedFile) {
  const Folder folder;
  const std::string file = folder / "file";
  put(file, "old");
  const std::string note = "kept";
  if (::setxattr(file.c_str(), "user.note", note.data(), note.size(), 0) != 0 ||
      !allowNobodyToRead(file)) {
    GTEST_SKIP() << "this file system has no such attributes";
  }
  const auto mode = modeOf(file);
  const auto list = attributeOf(file, kAccessList);
  EXPECT_EQ(PosixFileManager().write(file, "new"), std::nullopt);
  EXPECT_EQ(bytesOf(file), "new");
  EXPECT_EQ(attributeOf(file, "user.note"), note);
  EXPECT_EQ(attributeOf(file, kAccessList), list);
  EXPECT_EQ(modeOf(file), mode);
}

TEST(PosixFileManager, GivesNobodyMoreAccessWhereTheGroupCannotBeKept) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can make a file of another user";
  constexpr gid_t kForeignGroup = 54321;
  // Users whom the group kept out must not get in among the others.
  for (const auto& [before, after] : {std::pair{0666U, 0606U}, {0606U, 0600U}, {0646U, 0604U}}) {
    const Folder folder;
    put(folder / "file", "old");
    ::chmod((folder / "file").c_str(), before);
    ASSERT_EQ(::chown((folder / "file").c_str(), 0, kForeignGroup), 0);
    {
      const test::OrdinaryUser user;
      EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), std::nullopt);
    }
    EXPECT_EQ(bytesOf(folder / "file"), "new");
    EXPECT_EQ(modeOf(folder / "file"), after);
  }
}

TEST(PosixFileManager, MakesNewFoldersForTheUserAloneWhateverTheUmask) {
  const Folder folder;
  PosixFileManager files;
  for (const mode_t mask : {0000, 0077, 0777}) {
    const Umask umask(mask);
    fs::remove_all(folder / "a");
    files.createDirectory(folder / "a/b/c");
    EXPECT_EQ(modeOf(folder / "a"), 0700U);
    EXPECT_EQ(modeOf(folder / "a/b/c"), 0700U);
  }
  EXPECT_EQ(files.write(folder / "a/b/c/file", "x"), std::nullopt);
  files.createDirectory(folder / "a/b/c");
  EXPECT_EQ(files.contents(folder / "a/b/c/file"), "x");
}

TEST(PosixFileManager, LeavesTheModeOfAnExistingFolder) {
  const Folder folder;
  fs::create_directory(folder / "a");
  ::chmod((folder / "a").c_str(), 0755);
  PosixFileManager().createDirectory(folder / "a/b");
  EXPECT_EQ(modeOf(folder / "a"), 0755U);
  EXPECT_EQ(modeOf(folder / "a/b"), 0700U);
}

TEST(PosixFileManager, TheVersionChangesWithTheFile) {
  const Folder folder;
  PosixFileManager files;
  EXPECT_EQ(files.version(folder / "file"), std::nullopt);
  files.write(folder / "file", "one");
  const auto first = files.version(folder / "file");
  EXPECT_TRUE(first);
  EXPECT_EQ(files.contents(folder / "file"), "one");
  EXPECT_EQ(files.version(folder / "file"), first);
  files.write(folder / "file", "two");
  const auto second = files.version(folder / "file");
  EXPECT_NE(second, first);
  put(folder / "file", "longer");
  EXPECT_NE(files.version(folder / "file"), second);
}

TEST(PosixFileManager, KeepsTheOldFileBesideTheNewOne) {
  const Folder folder;
  PosixFileManager files;
  for (const char* old : {"first", "second"}) {
    put(folder / "file", old);
    ::chmod((folder / "file").c_str(), 0200);
    EXPECT_EQ(files.write(folder / "file", "new", {.keepOldWithSuffix = ".old"}), std::nullopt);
    EXPECT_EQ(bytesOf(folder / "file.old"), old);
    EXPECT_EQ(bytesOf(folder / "file"), "new");
    EXPECT_EQ(modeOf(folder / "file"), 0600U);
    EXPECT_EQ(folder.names(), (Names{"file", "file.old"}));
  }
}

TEST(PosixFileManager, KeepsAnOldFileThatTheUserMayNeitherReadNorWrite) {
  const Folder folder;
  put(folder / "file", "old");
  ::chmod((folder / "file").c_str(), 0000);
  {
    const test::OrdinaryUser user;
    EXPECT_EQ(PosixFileManager().write(folder / "file", "new", {.keepOldWithSuffix = ".old"}),
              std::nullopt);
  }
  ::chmod((folder / "file.old").c_str(), 0600);
  EXPECT_EQ(bytesOf(folder / "file.old"), "old");
  EXPECT_EQ(bytesOf(folder / "file"), "new");
}

TEST(PosixFileManager, KeepsTheFileThatALinkPointsAtInItsOwnFolder) {
  const Folder folder;
  fs::create_directory(folder / "elsewhere");
  put(folder / "elsewhere/file", "old");
  fs::create_symlink("elsewhere/file", folder / "link");
  EXPECT_EQ(PosixFileManager().write(folder / "link", "new", {.keepOldWithSuffix = ".old"}),
            std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(bytesOf(folder / "elsewhere/file"), "new");
  EXPECT_EQ(bytesOf(folder / "elsewhere/file.old"), "old");
}

TEST(PosixFileManager, AFileThatIsKeptIsNeverMissing) {
  const Folder folder;
  put(folder / "file", "old");
  std::atomic<bool> writing = true;
  std::atomic<int> missing = 0;
  std::thread reader([&] {
    while (writing) {
      if (::access((folder / "file").c_str(), F_OK) != 0) ++missing;
    }
  });
  PosixFileManager files;
  for (int i = 0; i < 500; ++i) files.write(folder / "file", "new", {.keepOldWithSuffix = ".old"});
  writing = false;
  reader.join();
  EXPECT_EQ(missing, 0);
}

TEST(PosixFileManager, DoesNotReplaceAKeptFileByAMuchSmallerOne) {
  const Folder folder;
  PosixFileManager files;
  put(folder / "file", "a whole month");
  for (const char* next : {"a day", "one more month", "another day"}) {
    files.write(folder / "file", next, {.keepOldWithSuffix = ".old"});
  }
  EXPECT_EQ(bytesOf(folder / "file.old"), "one more month");
  EXPECT_EQ(bytesOf(folder / "file"), "another day");
}

TEST(PosixFileManager, RemovesTheKeptFile) {
  const Folder folder;
  PosixFileManager files;
  put(folder / "file", "old");
  fs::create_symlink("file", folder / "link");
  files.write(folder / "link", "new", {.keepOldWithSuffix = ".old"});
  files.removeKept(folder / "link", ".other");
  EXPECT_EQ(folder.names(), (Names{"file", "file.old", "link"}));
  files.removeKept(folder / "link", ".old");
  EXPECT_EQ(folder.names(), (Names{"file", "link"}));
}

TEST(PosixFileManager, KeepsNothingWithoutAnOldFile) {
  const Folder folder;
  EXPECT_EQ(PosixFileManager().write(folder / "file", "new", {.keepOldWithSuffix = ".old"}),
            std::nullopt);
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(PosixFileManager, LeavesAnOldFileThatCannotBeKept) {
  const Folder folder;
  put(folder / "file", "old");
  fs::create_directory(folder / "file.old");
  EXPECT_EQ(PosixFileManager().write(folder / "file", "new", {.keepOldWithSuffix = ".old"}),
            "Is a directory");
  EXPECT_EQ(bytesOf(folder / "file"), "old");
  EXPECT_EQ(folder.names(), (Names{"file", "file.old"}));
}

TEST(PosixFileManager, WritesTheFileThatALinkPointsAt) {
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

TEST(PosixFileManager, GivesTheReasonOfAFailedWrite) {
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

TEST(PosixFileManager, WritesAFileWhoseNameHasTheGreatestLength) {
  const Folder folder;
  EXPECT_EQ(PosixFileManager().write(folder / std::string(255, 'n'), "x"), std::nullopt);
}

TEST(PosixFileManager, KeepsTheOldFileInAReadOnlyFolder) {
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

TEST(PosixFileManager, DoesNotReplaceAWriteProtectedFile) {
  const Folder folder;
  put(folder / "file", "old");
  ::chmod((folder / "file").c_str(), 0444);
  const test::OrdinaryUser user;
  EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), "Permission denied");
  EXPECT_EQ(bytesOf(folder / "file"), "old");
}

TEST(PosixFileManager, LeavesNoTemporaryFileWhenAWriteFails) {
  const Folder folder;
  put(folder / "file", "old");
  {
    const FileSizeLimit limit(64 * 1024);
    EXPECT_EQ(PosixFileManager().write(folder / "file", std::string(1 << 20, 'n'),
                                       {.keepOldWithSuffix = ".old"}),
              "File too large");
  }
  EXPECT_EQ(bytesOf(folder / "file"), "old");
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(PosixFileManager, SurvivesAFileThatGrowsTooLarge) {
  const Folder folder;
  EXPECT_EQ(inChild([&] {
              std::signal(SIGXFSZ, SIG_DFL);
              PosixFileManager files;
              const FileSizeLimit limit(64 * 1024);
              const auto reason = files.write(folder / "file", std::string(1 << 20, 'n'));
              return reason == "File too large" ? 0 : 1;
            }),
            0);
}

TEST(PosixFileManager, KeepsTheOldFileOnAFullDisk) {
  const Folder folder;
  constexpr int kCannotMount = 77;
  // A private disk in a process of its own.
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

TEST(PosixFileManager, RemovesTheTemporaryFileOfAKilledWriteAfterADay) {
  const Folder folder;
  const std::string recent = leftByAKilledWrite(folder, "file");
  const std::string old = leftByAKilledWrite(folder, "file");
  const std::string ofAnother = leftByAKilledWrite(folder, "other");
  const std::string alike = old + "x";
  const std::string link = std::string(old).replace(old.size() - 12, 8, "01234567");
  put(folder / alike, "of another program");
  fs::create_symlink(alike, folder / link);
  for (const auto& name : {old, ofAnother, alike, link}) age(folder / name, 25 * 60 * 60);
  age(folder / recent, 23 * 60 * 60);
  EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), std::nullopt);
  Names left{recent, ofAnother, alike, link, "file", "other"};
  std::sort(left.begin(), left.end());
  EXPECT_EQ(folder.names(), left);
}

TEST(PosixFileManager, WritesToAFolderThatCannotBeListed) {
  const Folder folder;
  ::chmod(folder.path().c_str(), 0333);
  {
    const test::OrdinaryUser user;
    EXPECT_EQ(PosixFileManager().write(folder / "file", "new"), std::nullopt);
  }
  ::chmod(folder.path().c_str(), 0777);
  EXPECT_EQ(folder.names(), Names{"file"});
}

TEST(PosixFileManager, KeepsAWholeFileWhenKilledWhileWriting) {
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
