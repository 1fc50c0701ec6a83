#include "platform/freedesktop/files/UserFolders.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include "platform/freedesktop/files/PosixFileManager.h"
#include "support/Sandbox.h"

namespace tollbeam {

using test::Environment;

TEST(UserFolders, VariablesNameTheFolders) {
  const Environment data("XDG_DATA_HOME", "/data//");
  const Environment config("XDG_CONFIG_HOME", "/config");
  const Environment dirs("XDG_CONFIG_DIRS", "/first:relative::/second/");
  EXPECT_EQ(dataHome(), "/data");
  EXPECT_EQ(configHome(), "/config");
  EXPECT_EQ(configDirs(), (std::vector<std::string>{"/first", "/second"}));
  EXPECT_EQ(PosixFileManager().applicationSupportDirectory(), "/data");
}

TEST(UserFolders, DefaultsAreBelowHome) {
  const Environment home("HOME", "/home/me/");
  const Environment data("XDG_DATA_HOME", std::nullopt);
  const Environment config("XDG_CONFIG_HOME", "");
  const Environment dirs("XDG_CONFIG_DIRS", std::nullopt);
  EXPECT_EQ(dataHome(), "/home/me/.local/share");
  EXPECT_EQ(configHome(), "/home/me/.config");
  EXPECT_EQ(configDirs(), (std::vector<std::string>{"/etc/xdg"}));
}

TEST(UserFolders, ARelativeVariableCountsAsUnset) {
  const Environment home("HOME", "/home/me");
  const Environment data("XDG_DATA_HOME", "share");
  EXPECT_EQ(dataHome(), "/home/me/.local/share");
}

TEST(UserFolders, HomeComesFromThePasswordFileWithoutTheVariable) {
  const Environment home("HOME", std::nullopt);
  const passwd* user = ::getpwuid(::getuid());
  if (!user) GTEST_SKIP() << "this user is in no password file";
  EXPECT_EQ(homeFolder(), user->pw_dir);
}

}  // namespace tollbeam
