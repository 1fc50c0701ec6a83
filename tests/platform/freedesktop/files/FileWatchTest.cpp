#include "platform/freedesktop/files/FileWatch.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <filesystem>
#include <optional>

#include "support/PrivateBus.h"
#include "support/Sandbox.h"

namespace tollbeam {

namespace {

namespace fs = std::filesystem;
using test::put;
using test::putAtomically;
using test::waitFor;

/// Watches the file at home/config/app/file, whose folders are there.
class FileWatchTest : public testing::Test {
 protected:
  FileWatchTest() { fs::create_directories(folder / "home/config/app"); }

  [[nodiscard]] std::string file() const { return folder / "home/config/app/file"; }
  void watch() {
    watched.emplace(file(), [this] { ++reports; });
  }
  /// Whether a report comes; each call waits for a new one.
  bool reported() {
    const bool came = waitFor([&] { return reports > 0; });
    reports = 0;
    return came;
  }
  /// That the file in its place is watched, not one that was there before.
  bool followsTheFile() {
    put(file(), "new");
    return reported();
  }
  /// Moves `name` away and makes a folder with the same file in its place.
  void makeAgain(const std::string& name) const {
    fs::rename(folder / name, folder / "moved");
    fs::create_directories(folder / "home/config/app");
  }

  test::Folder folder;
  int reports = 0;
  std::optional<FileWatch> watched;
};

}  // namespace

TEST_F(FileWatchTest, ReportsEveryKindOfChange) {
  watch();
  put(file(), "made");
  EXPECT_TRUE(reported());
  put(file(), "written in place");
  EXPECT_TRUE(reported());
  putAtomically(file(), "replaced");
  EXPECT_TRUE(reported());
  fs::permissions(file(), fs::perms::owner_read);
  EXPECT_TRUE(reported());
  fs::rename(file(), folder / "elsewhere");
  EXPECT_TRUE(reported());
  fs::rename(folder / "elsewhere", file());
  EXPECT_TRUE(reported());
  fs::remove(file());
  EXPECT_TRUE(reported());
}

TEST_F(FileWatchTest, ReportsABurstOnce) {
  watch();
  int others = 0;
  const FileWatch other(folder / "home/config/app/other", [&] { ++others; });
  QElapsedTimer burst;
  burst.start();
  for (int i = 0; i < 100; ++i) {
    put(file(), std::to_string(i));
    QCoreApplication::processEvents();
  }
  // A busy machine may stretch it over several of the times (100 ms) that are one burst.
  const auto most = 1 + burst.elapsed() / 90;
  ASSERT_TRUE(waitFor([&] { return reports > 0; }));
  // Any further report of the burst would come before this one.
  put(folder / "home/config/app/other", "x");
  ASSERT_TRUE(waitFor([&] { return others > 0; }));
  EXPECT_LE(reports, most);
}

TEST_F(FileWatchTest, DoesNotReportOtherFiles) {
  watch();
  int others = 0;
  const FileWatch other(folder / "home/config/app/other", [&] { ++others; });
  put(folder / "home/config/app/other", "x");
  EXPECT_TRUE(waitFor([&] { return others > 0; }));
  EXPECT_EQ(reports, 0);
}

TEST_F(FileWatchTest, FollowsARenamedAndRecreatedFolderAbove) {
  for (const char* name : {"home/config/app", "home/config", "home"}) {
    watch();
    makeAgain(name);
    EXPECT_TRUE(reported()) << name;
    EXPECT_TRUE(followsTheFile()) << name;
    fs::remove_all(folder / "moved");
  }
}

TEST_F(FileWatchTest, FollowsADeletedAndRecreatedFolderAbove) {
  for (const char* name : {"home/config/app", "home/config", "home"}) {
    watch();
    fs::remove_all(folder / name);
    EXPECT_TRUE(reported()) << name;
    fs::create_directories(folder / "home/config/app");
    EXPECT_TRUE(followsTheFile()) << name;
  }
}

TEST_F(FileWatchTest, FollowsAFolderThatIsMovedInLater) {
  fs::rename(folder / "home", folder / "late");
  put(folder / "late/config/app/file", "late");
  watch();
  fs::rename(folder / "late", folder / "home");
  EXPECT_TRUE(reported());
  EXPECT_TRUE(followsTheFile());
}

TEST_F(FileWatchTest, FollowsAFolderLinkThatIsPointedElsewhere) {
  fs::remove_all(folder / "home/config");
  for (const char* name : {"one", "two", "three"}) fs::create_directories(folder / name + "/app");
  fs::create_symlink("../one", folder / "home/config");
  watch();
  EXPECT_TRUE(followsTheFile());
  // As careful programs do it, with a link that takes the old one's place.
  fs::create_symlink(folder / "two", folder / "new");
  fs::rename(folder / "new", folder / "home/config");
  EXPECT_TRUE(reported());
  EXPECT_TRUE(followsTheFile());
  // And as people do it.
  fs::remove(folder / "home/config");
  fs::create_symlink("../three", folder / "home/config");
  EXPECT_TRUE(reported());
  EXPECT_TRUE(followsTheFile());
  EXPECT_TRUE(fs::exists(folder / "three/app/file"));
}

TEST_F(FileWatchTest, FollowsALinkInPlaceOfTheFile) {
  fs::create_directory(folder / "dotfiles");
  fs::create_symlink("../../../dotfiles/one", file());
  watch();
  put(folder / "dotfiles/one", "made");
  EXPECT_TRUE(reported());
  fs::remove(file());
  fs::create_symlink(folder / "dotfiles/two", file());
  EXPECT_TRUE(reported());
  put(folder / "dotfiles/two", "made");
  EXPECT_TRUE(reported());
  fs::rename(folder / "dotfiles", folder / "moved");
  EXPECT_TRUE(reported());
}

TEST_F(FileWatchTest, WatchesACircleOfLinks) {
  fs::create_symlink("file", file());
  watch();
  fs::remove(file());
  EXPECT_TRUE(reported());
  EXPECT_TRUE(followsTheFile());
}

}  // namespace tollbeam
