#include "platform/freedesktop/defaults/JsonUserDefaults.h"

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <set>
#include <sstream>

#include "platform/freedesktop/defaults/ValueJson.h"
#include "platform/freedesktop/files/PosixFileManager.h"
#include "support/PrivateBus.h"
#include "support/Sandbox.h"

namespace tollbeam {

namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::put;
using test::putAtomically;
using test::waitFor;

/// The real file manager, with a disk that can be full.
class FullDisk final : public FileManager {
 public:
  bool full = false;
  int writes = 0;
  mutable int reads = 0;

  [[nodiscard]] std::optional<std::string> applicationSupportDirectory() const override {
    return files_.applicationSupportDirectory();
  }
  void createDirectory(const std::string& path) override { files_.createDirectory(path); }
  [[nodiscard]] std::optional<std::string> contents(const std::string& path) const override {
    ++reads;
    return files_.contents(path);
  }
  [[nodiscard]] std::optional<FileVersion> version(const std::string& path) const override {
    return files_.version(path);
  }
  std::optional<std::string> write(const std::string& path, std::string_view bytes,
                                   const WriteOptions& options) override {
    ++writes;
    if (full) return "No space left on device";
    return files_.write(path, bytes, options);
  }
  void removeKept(const std::string& path, const std::string& suffix) override {
    files_.removeKept(path, suffix);
  }

 private:
  PosixFileManager files_;
};

class JsonUserDefaultsTest : public testing::Test {
 protected:
  [[nodiscard]] std::string file() const { return folder / "Tollbeam/preferences.json"; }
  void store(const std::string& json) const {
    fs::create_directory(folder / "Tollbeam");
    put(file(), json);
  }
  [[nodiscard]] std::optional<Dictionary> onDisk() const {
    const auto bytes = bytesOf(file());
    return bytes ? dictionaryFromJson(*bytes) : std::nullopt;
  }

  test::Folder folder;
  FullDisk disk;
};

using Inodes = std::multiset<ino_t>;

ino_t inodeOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// The folders in which every change of a file wakes this process.
Inodes watchedInodes() {
  Inodes inodes;
  for (const auto& descriptor : fs::directory_iterator("/proc/self/fdinfo")) {
    std::istringstream lines(bytesOf(descriptor.path()).value_or(""));
    for (std::string line; std::getline(lines, line);) {
      const auto inode = line.find(" ino:");
      const auto mask = line.find(" mask:");
      if (!line.starts_with("inotify ") || inode == std::string::npos) continue;
      if ((std::stoul(line.substr(mask + 6), nullptr, 16) & IN_CREATE) == 0) continue;
      inodes.insert(std::stoull(line.substr(inode + 5), nullptr, 16));
    }
  }
  return inodes;
}

/// A store whose changes are counted.
struct Watched {
  Watched(FileManager& files, const std::string& path) : defaults(files, path) {
    defaults.registerDefaults({{"limit", 80}});
    changes = defaults.onChange([this] { ++changed; });
  }
  bool limitBecomes(std::int64_t limit) {
    return waitFor([&] { return defaults.integerForKey("limit") == limit && changed > 0; });
  }

  JsonUserDefaults defaults;
  int changed = 0;
  Subscription changes;
};

}  // namespace

TEST_F(JsonUserDefaultsTest, IsInTheConfigurationFolder) {
  const test::Environment config("XDG_CONFIG_HOME", "/config");
  EXPECT_EQ(JsonUserDefaults::defaultPath(), "/config/Tollbeam/preferences.json");
}

TEST_F(JsonUserDefaultsTest, KeepsValuesInTheFile) {
  {
    JsonUserDefaults defaults(disk, file());
    defaults.set("limit", 85);
    defaults.set("quietEnabled", true);
    defaults.set("snoozeUntil", 1767225600.5);
    defaults.set("lowSound", "Glass");
    defaults.set("list", List{1, "two"});
    defaults.set("dictionary", Dictionary{{"three", 3.0}});
  }
  JsonUserDefaults defaults(disk, file());
  EXPECT_EQ(defaults.integerForKey("limit"), 85);
  EXPECT_TRUE(defaults.boolForKey("quietEnabled"));
  EXPECT_EQ(defaults.doubleForKey("snoozeUntil"), 1767225600.5);
  EXPECT_EQ(defaults.stringForKey("lowSound"), "Glass");
  EXPECT_EQ(onDisk()->at("list"), Value(List{1, "two"}));
  EXPECT_EQ(onDisk()->at("dictionary"), Value(Dictionary{{"three", 3.0}}));
}

TEST_F(JsonUserDefaultsTest, ReadingWritesNothing) {
  JsonUserDefaults defaults(disk, file());
  defaults.registerDefaults({{"limit", 80}});
  EXPECT_EQ(defaults.integerForKey("limit"), 80);
  EXPECT_EQ(disk.writes, 0);
  EXPECT_TRUE(fs::is_empty(folder / "Tollbeam"));
}

TEST_F(JsonUserDefaultsTest, WatchesOnlyItsOwnFolderEvenBeforeTheFirstSetting) {
  const auto before = watchedInodes();
  const JsonUserDefaults defaults(disk, file());
  auto watched = watchedInodes();
  for (const auto inode : before) watched.erase(watched.find(inode));
  EXPECT_EQ(watched, Inodes{inodeOf(folder / "Tollbeam")});
}

TEST_F(JsonUserDefaultsTest, KeepsValuesInMemoryWhereTheFolderCannotBeMade) {
  put(folder / "Tollbeam", "a file");
  Watched watched(disk, file());
  EXPECT_EQ(watched.defaults.integerForKey("limit"), 80);
  watched.defaults.set("limit", 85);
  EXPECT_TRUE(watched.limitBecomes(85));
  EXPECT_EQ(bytesOf(folder / "Tollbeam"), "a file");
}

TEST_F(JsonUserDefaultsTest, MakesTheFolderForTheUserAlone) {
  JsonUserDefaults defaults(disk, file());
  defaults.set("limit", 85);
  struct stat status {};
  ASSERT_EQ(::stat((folder / "Tollbeam").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(JsonUserDefaultsTest, NotifiesOfOwnChangesLaterAndOnce) {
  Watched watched(disk, file());
  watched.defaults.set("limit", 85);
  watched.defaults.set("limit", 90);
  EXPECT_EQ(watched.changed, 0);
  EXPECT_TRUE(waitFor([&] { return watched.changed > 0; }));
  EXPECT_EQ(watched.changed, 1);
}

TEST_F(JsonUserDefaultsTest, NeitherWritesNorAnnouncesAnEqualValue) {
  store(R"({"limit": 85})");
  Watched watched(disk, file());
  watched.defaults.set("limit", 85);
  EXPECT_EQ(disk.writes, 0);
  watched.defaults.set("low", 10);
  EXPECT_TRUE(waitFor([&] { return watched.changed == 1; }));
  EXPECT_EQ(disk.writes, 1);
}

TEST_F(JsonUserDefaultsTest, StoresAValueEqualToTheDefault) {
  Watched watched(disk, file());
  watched.defaults.set("limit", 80);
  EXPECT_EQ(onDisk(), (Dictionary{{"limit", 80}}));
}

TEST_F(JsonUserDefaultsTest, FollowsChangesOfOtherPrograms) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  put(file(), R"({"limit": 82})");
  EXPECT_TRUE(watched.limitBecomes(82));
  for (const int limit : {83, 84, 85}) {
    watched.changed = 0;
    putAtomically(file(), "{\"limit\": " + std::to_string(limit) + "}");
    EXPECT_TRUE(watched.limitBecomes(limit));
  }
}

TEST_F(JsonUserDefaultsTest, ReturnsToTheDefaultsWhenTheFileIsDeleted) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  for (int i = 0; i < 2; ++i) {
    watched.changed = 0;
    fs::remove(file());
    EXPECT_TRUE(watched.limitBecomes(80));
    watched.changed = 0;
    put(file(), R"({"limit": 82})");
    EXPECT_TRUE(watched.limitBecomes(82));
  }
}

TEST_F(JsonUserDefaultsTest, FollowsFoldersThatAreMadeAndDeleted) {
  JsonUserDefaults elsewhere(disk, folder / "a/b/c/preferences.json");
  Watched watched(disk, folder / "a/b/c/preferences.json");
  for (int i = 0; i < 3; ++i) {
    watched.changed = 0;
    fs::create_directories(folder / "a/b/c");
    put(folder / "a/b/c/preferences.json", R"({"limit": 82})");
    ASSERT_TRUE(watched.limitBecomes(82));
    watched.changed = 0;
    fs::remove_all(folder / (i == 0 ? "a/b/c" : "a"));
    ASSERT_TRUE(watched.limitBecomes(80));
  }
}

TEST_F(JsonUserDefaultsTest, FollowsAFolderThatIsReplacedByRename) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  fs::create_directory(folder / "other");
  put(folder / "other/preferences.json", R"({"limit": 82})");
  fs::rename(folder / "Tollbeam", folder / "gone");
  fs::rename(folder / "other", folder / "Tollbeam");
  EXPECT_TRUE(watched.limitBecomes(82));
  watched.changed = 0;
  put(file(), R"({"limit": 83})");
  EXPECT_TRUE(watched.limitBecomes(83));
}

TEST_F(JsonUserDefaultsTest, WatchesAndKeepsALinkedFile) {
  fs::create_directory(folder / "dotfiles");
  fs::create_directory(folder / "Tollbeam");
  put(folder / "dotfiles/tollbeam", R"({"limit": 81})");
  fs::create_symlink("../dotfiles/tollbeam", file());
  Watched watched(disk, file());
  putAtomically(folder / "dotfiles/tollbeam", R"({"limit": 82})");
  EXPECT_TRUE(watched.limitBecomes(82));
  watched.defaults.set("limit", 83);
  EXPECT_TRUE(fs::is_symlink(file()));
  EXPECT_EQ(dictionaryFromJson(*bytesOf(folder / "dotfiles/tollbeam")),
            (Dictionary{{"limit", 83}}));
}

TEST_F(JsonUserDefaultsTest, AWriteKeepsTheLatestChangesOfOtherPrograms) {
  store(R"({"limit": 81, "low": 10})");
  Watched watched(disk, file());
  putAtomically(file(), R"({"limit": 82, "theirs": [1, 2]})");
  watched.defaults.set("longHours", 4);
  EXPECT_EQ(onDisk(), (Dictionary{{"limit", 82}, {"theirs", List{1, 2}}, {"longHours", 4}}));
  EXPECT_EQ(watched.defaults.integerForKey("limit"), 82);
}

TEST_F(JsonUserDefaultsTest, AWriteKeepsTheNullsOfOtherPrograms) {
  store(R"({"theirs": {"a": [null, 1], "b": null}, "other": null})");
  JsonUserDefaults defaults(disk, file());
  defaults.set("low", 10);
  EXPECT_EQ(onDisk(), dictionaryFromJson(
                          R"({"theirs": {"a": [null, 1], "b": null}, "other": null, "low": 10})"));
  EXPECT_NE(bytesOf(file())->find("\"other\": null"), std::string::npos);
}

TEST_F(JsonUserDefaultsTest, TakesANullForNoValue) {
  store(R"({"limit": null})");
  JsonUserDefaults defaults(disk, file());
  defaults.registerDefaults({{"limit", 80}});
  EXPECT_EQ(defaults.integerForKey("limit"), 80);
}

TEST_F(JsonUserDefaultsTest, AnEqualValueOverridesAnUnseenChangeInTheFile) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  putAtomically(file(), R"({"limit": 82})");
  watched.defaults.set("limit", 81);
  EXPECT_EQ(onDisk(), (Dictionary{{"limit", 81}}));
}

TEST_F(JsonUserDefaultsTest, AnnouncesABurstAFewTimes) {
  Watched watched(disk, file());
  store("{}");
  for (int i = 1; i <= 500; ++i) putAtomically(file(), "{\"limit\": " + std::to_string(i) + "}");
  EXPECT_TRUE(watched.limitBecomes(500));
  EXPECT_LE(watched.changed, 3);
}

TEST_F(JsonUserDefaultsTest, SetsADamagedFileAside) {
  for (const std::string damaged : {"", "{", "[1]", "{\"limit\": \"\xff\"}", "{\"limit\": 81} x"}) {
    store(damaged);
    JsonUserDefaults defaults(disk, file());
    defaults.registerDefaults({{"limit", 80}});
    EXPECT_EQ(defaults.integerForKey("limit"), 80);
    EXPECT_FALSE(fs::exists(file()));
    EXPECT_EQ(bytesOf(file() + ".damaged"), damaged);
    defaults.set("low", 10);
    EXPECT_EQ(onDisk(), (Dictionary{{"low", 10}}));
    EXPECT_EQ(bytesOf(file() + ".damaged"), damaged);
    fs::remove(file() + ".damaged");
  }
}

TEST_F(JsonUserDefaultsTest, KeepsEveryDamagedFile) {
  for (const char* damaged : {"one", "two", "three"}) {
    store(damaged);
    const JsonUserDefaults defaults(disk, file());
  }
  EXPECT_EQ(bytesOf(file() + ".damaged"), "one");
  EXPECT_EQ(bytesOf(file() + ".damaged.2"), "two");
  EXPECT_EQ(bytesOf(file() + ".damaged.3"), "three");
}

TEST_F(JsonUserDefaultsTest, SetsAFileAsideThatStaysDamaged) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  put(file(), "{\"limit\"");
  EXPECT_TRUE(watched.limitBecomes(80));
  EXPECT_EQ(bytesOf(file() + ".damaged"), "{\"limit\"");
}

TEST_F(JsonUserDefaultsTest, WaitsForAHalfWrittenFile) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  disk.reads = 0;
  put(file(), "{\"limit\"");
  ASSERT_TRUE(waitFor([&] { return disk.reads > 0; }));
  put(file(), R"({"limit": 82})");
  EXPECT_TRUE(watched.limitBecomes(82));
  EXPECT_FALSE(fs::exists(file() + ".damaged"));
}

TEST_F(JsonUserDefaultsTest, SetsAFileAsideThatWasDamagedBeforeAWrite) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  put(file(), "damaged");
  watched.defaults.set("low", 10);
  EXPECT_EQ(watched.defaults.integerForKey("low"), 10);
  EXPECT_EQ(bytesOf(file()), "damaged");
  EXPECT_TRUE(waitFor([&] { return onDisk() == Dictionary{{"low", 10}}; }));
  EXPECT_EQ(bytesOf(file() + ".damaged"), "damaged");
}

TEST_F(JsonUserDefaultsTest, AWriteWaitsForAnEditorThatIsWriting) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  put(file(), "{\"limit\"");
  watched.defaults.set("low", 10);
  put(file(), R"({"limit": 82, "theirs": 1})");
  const Dictionary both{{"limit", 82}, {"low", 10}, {"theirs", 1}};
  EXPECT_TRUE(waitFor([&] { return onDisk() == both; }));
  EXPECT_TRUE(watched.limitBecomes(82));
  EXPECT_FALSE(fs::exists(file() + ".damaged"));
}

TEST_F(JsonUserDefaultsTest, StoresUnsavedValuesAtTheEndWhateverAnEditorLeft) {
  for (const bool finished : {false, true}) {
    store("{}");
    {
      JsonUserDefaults defaults(disk, file());
      put(file(), "{\"theirs\"");
      defaults.set("low", 10);
      if (finished) put(file(), R"({"theirs": 1})");
    }
    EXPECT_EQ(onDisk(),
              (finished ? Dictionary{{"low", 10}, {"theirs", 1}} : Dictionary{{"low", 10}}));
    EXPECT_EQ(bytesOf(file() + ".damaged"),
              finished ? std::nullopt : std::optional<std::string>("{\"theirs\""));
    fs::remove(file() + ".damaged");
  }
}

TEST_F(JsonUserDefaultsTest, LeavesADamagedFileAtTheEndThatCannotBeSetAside) {
  store("{}");
  ::chmod(file().c_str(), 0666);
  ::chmod((folder / "Tollbeam").c_str(), 0555);
  {
    const test::OrdinaryUser user;
    JsonUserDefaults defaults(disk, file());
    put(file(), "damaged");
    defaults.set("low", 10);
    EXPECT_EQ(defaults.integerForKey("low"), 10);
  }
  ::chmod((folder / "Tollbeam").c_str(), 0777);
  EXPECT_EQ(bytesOf(file()), "damaged");
  EXPECT_EQ(disk.writes, 0);
}

TEST_F(JsonUserDefaultsTest, StoresAtTheEndWhatCouldNotBeStoredBefore) {
  {
    JsonUserDefaults defaults(disk, file());
    disk.full = true;
    defaults.set("low", 10);
    EXPECT_EQ(onDisk(), std::nullopt);
    disk.full = false;
  }
  EXPECT_EQ(onDisk(), (Dictionary{{"low", 10}}));
}

TEST_F(JsonUserDefaultsTest, LeavesAnUnreadableFileAlone) {
  store(R"({"limit": 81})");
  ::chmod((folder / "Tollbeam").c_str(), 0777);
  ::chmod(file().c_str(), 0000);
  {
    const test::OrdinaryUser user;
    Watched watched(disk, file());
    watched.defaults.set("low", 10);
    EXPECT_EQ(watched.defaults.integerForKey("low"), 10);
    EXPECT_EQ(watched.defaults.integerForKey("limit"), 80);
    EXPECT_EQ(disk.writes, 0);
  }
  ::chmod(file().c_str(), 0644);
  EXPECT_EQ(onDisk(), (Dictionary{{"limit", 81}}));
}

TEST_F(JsonUserDefaultsTest, TakesOverAFileThatBecomesReadable) {
  store(R"({"limit": 81})");
  ::chmod((folder / "Tollbeam").c_str(), 0777);
  ::chmod(file().c_str(), 0000);
  ASSERT_TRUE(::geteuid() != 0 || ::chown(file().c_str(), 65534, 65534) == 0);
  const test::OrdinaryUser user;
  Watched watched(disk, file());
  watched.defaults.set("low", 10);
  ::chmod(file().c_str(), 0644);
  EXPECT_TRUE(watched.limitBecomes(81));
  EXPECT_EQ(onDisk(), (Dictionary{{"limit", 81}, {"low", 10}}));
}

TEST_F(JsonUserDefaultsTest, KeepsValuesOnAFullDiskAndStoresThemLater) {
  store(R"({"limit": 81})");
  Watched watched(disk, file());
  disk.full = true;
  watched.defaults.set("low", 10);
  EXPECT_EQ(watched.defaults.integerForKey("low"), 10);
  EXPECT_TRUE(waitFor([&] { return watched.changed == 1; }));
  EXPECT_EQ(onDisk(), (Dictionary{{"limit", 81}}));
  // Changes by other programs still take effect.
  putAtomically(file(), R"({"limit": 82})");
  EXPECT_TRUE(watched.limitBecomes(82));
  EXPECT_EQ(watched.defaults.integerForKey("low"), 10);
  disk.full = false;
  watched.defaults.set("longHours", 4);
  EXPECT_EQ(onDisk(), (Dictionary{{"limit", 82}, {"low", 10}, {"longHours", 4}}));
}

TEST_F(JsonUserDefaultsTest, IgnoresValuesThatJsonCannotHold) {
  Watched watched(disk, file());
  watched.defaults.set("limit", std::nan(""));
  watched.defaults.set("lowSound", "\xff");
  EXPECT_EQ(watched.defaults.integerForKey("limit"), 80);
  EXPECT_EQ(watched.defaults.stringForKey("lowSound"), "\uFFFD");
  EXPECT_EQ(onDisk(), (Dictionary{{"lowSound", "\uFFFD"}}));
}

TEST_F(JsonUserDefaultsTest, SharesTheFileBetweenTwoPrograms) {
  Watched one(disk, file());
  Watched two(disk, file());
  one.defaults.set("limit", 81);
  EXPECT_TRUE(two.limitBecomes(81));
  one.changed = 0;
  two.defaults.set("limit", 82);
  EXPECT_TRUE(one.limitBecomes(82));
}

TEST_F(JsonUserDefaultsTest, KeepsValuesInMemoryWithoutAPath) {
  JsonUserDefaults defaults(disk, std::nullopt);
  int changed = 0;
  const auto changes = defaults.onChange([&] { ++changed; });
  defaults.set("limit", 85);
  EXPECT_EQ(defaults.integerForKey("limit"), 85);
  EXPECT_TRUE(waitFor([&] { return changed == 1; }));
}

TEST_F(JsonUserDefaultsTest, NotifiesNobodyAfterItsEnd) {
  int changed = 0;
  {
    Watched watched(disk, file());
    watched.defaults.set("limit", 85);
    watched.changes = watched.defaults.onChange([&] { ++changed; });
  }
  Watched later(disk, file());
  later.defaults.set("limit", 86);
  EXPECT_TRUE(waitFor([&] { return later.changed > 0; }));
  EXPECT_EQ(changed, 0);
}

}  // namespace tollbeam
