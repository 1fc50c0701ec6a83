#include "platform/freedesktop/files/SetAside.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/Sandbox.h"

namespace tollbeam {

namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::Folder;
using test::put;
using Names = std::vector<std::string>;

}  // namespace

TEST(SetAside, RenamesTheFile) {
  const Folder folder;
  put(folder / "file", "damaged");
  EXPECT_TRUE(setAside(folder / "file"));
  EXPECT_EQ(folder.names(), Names{"file.damaged"});
  EXPECT_EQ(bytesOf(folder / "file.damaged"), "damaged");
}

TEST(SetAside, OverwritesNothing) {
  const Folder folder;
  for (const char* text : {"one", "two", "three"}) {
    put(folder / "file", text);
    EXPECT_TRUE(setAside(folder / "file"));
  }
  EXPECT_EQ(bytesOf(folder / "file.damaged"), "one");
  EXPECT_EQ(bytesOf(folder / "file.damaged.2"), "two");
  EXPECT_EQ(bytesOf(folder / "file.damaged.3"), "three");
}

TEST(SetAside, OverwritesNoFolderAndNoDanglingLink) {
  const Folder folder;
  fs::create_directory(folder / "file.damaged");
  fs::create_symlink("nowhere", folder / "file.damaged.2");
  put(folder / "file", "damaged");
  EXPECT_TRUE(setAside(folder / "file"));
  EXPECT_EQ(bytesOf(folder / "file.damaged.3"), "damaged");
  EXPECT_TRUE(fs::is_symlink(folder / "file.damaged.2"));
}

TEST(SetAside, RenamesTheFileThatALinkPointsAt) {
  const Folder folder;
  fs::create_directory(folder / "elsewhere");
  put(folder / "elsewhere/file", "damaged");
  fs::create_symlink("elsewhere/file", folder / "link");
  EXPECT_TRUE(setAside(folder / "link"));
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(bytesOf(folder / "elsewhere/file.damaged"), "damaged");
  EXPECT_FALSE(fs::exists(folder / "elsewhere/file"));
}

TEST(SetAside, FailsWithoutChangingAnything) {
  const Folder folder;
  EXPECT_FALSE(setAside(folder / "missing"));
  fs::create_symlink("circle", folder / "circle");
  EXPECT_FALSE(setAside(folder / "circle"));
  put(folder / "file", "damaged");
  ::chmod(folder.path().c_str(), 0555);
  {
    const test::OrdinaryUser user;
    EXPECT_FALSE(setAside(folder / "file"));
  }
  ::chmod(folder.path().c_str(), 0777);
  EXPECT_EQ(folder.names(), (Names{"circle", "file"}));
}

}  // namespace tollbeam
