#include "platform/freedesktop/sounds/DesktopSounds.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "preferences/Prefs.h"
#include "support/PrivateBus.h"
#include "support/Sandbox.h"

namespace tollbeam {

namespace {

using test::waitFor;

/// A player that logs its arguments, one a line, and then an empty line.
class DesktopSoundsTest : public testing::Test {
 protected:
  DesktopSoundsTest() {
    std::filesystem::create_directories(folder / "theme/stereo");
    test::put(folder / "theme/stereo/Glass.oga", "");
    test::put(folder / "secret.oga", "");
    putPlayer("printf '%s\\n' \"$@\" '' >>" + log);
  }

  void putPlayer(const std::string& script) const {
    test::put(player, "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(player, std::filesystem::perms::owner_all);
  }
  bool logged(const std::string& text) const {
    return waitFor([&] { return test::bytesOf(log).value_or("") == text; });
  }

  test::Folder folder;
  std::string player = folder / "player";
  std::string log = folder / "log";
  DesktopSounds sounds{player, folder / "theme"};
};

}  // namespace

TEST(DefaultSound, TheSettingAndTheEventAreTwoConstants) {
  EXPECT_STREQ(kDefaultSound, "default");
  EXPECT_STREQ(kDefaultSoundEvent, "message-new-instant");
}

TEST_F(DesktopSoundsTest, PlaysOurOwnSoundsFromTheBundle) {
  EXPECT_EQ(sounds.fileOf("Glass"), folder / "theme/stereo/Glass.oga");
  sounds.play("Glass");
  EXPECT_TRUE(logged("file\n" + (folder / "theme/stereo/Glass.oga") + "\n\n"));
}

TEST_F(DesktopSoundsTest, LeavesOtherNamesToTheSoundTheme) {
  EXPECT_EQ(sounds.fileOf("No Such Sound"), std::nullopt);
  sounds.play("No Such Sound");
  EXPECT_TRUE(logged("event\nNo Such Sound\n\n"));
}

TEST_F(DesktopSoundsTest, TheDefaultSoundFallsBackOnTheBell) {
  sounds.playDefault();
  EXPECT_TRUE(logged("event\nmessage-new-instant\nbell\n\n"));
}

TEST_F(DesktopSoundsTest, PlaysEachSoundOnce) {
  sounds.play("one");
  ASSERT_TRUE(logged("event\none\n\n"));
  sounds.play("one");
  EXPECT_TRUE(logged("event\none\n\nevent\none\n\n"));
}

TEST_F(DesktopSoundsTest, TakesNoPathForAName) {
  EXPECT_EQ(sounds.fileOf("../../secret"), std::nullopt);
  EXPECT_EQ(sounds.fileOf(folder / "secret"), std::nullopt);
  EXPECT_EQ(sounds.fileOf(""), std::nullopt);
}

TEST_F(DesktopSoundsTest, DoesNotWaitForTheEndOfASound) {
  putPlayer("while ! test -e " + (folder / "end") + "; do sleep 0.01; done; echo done >" + log);
  sounds.play("long");
  EXPECT_EQ(test::bytesOf(log), std::nullopt);
  test::put(folder / "end", "");
  EXPECT_TRUE(logged("done\n"));
}

TEST_F(DesktopSoundsTest, DiscardsTheOutputOfThePlayer) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  putPlayer("echo out; echo err >&2; echo done >" + log);
  sounds.playDefault();
  EXPECT_TRUE(logged("done\n"));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(DesktopSoundsTest, IsSilentWithoutAPlayer) {
  DesktopSounds without(folder / "none", folder / "none");
  without.play("Glass");
  without.playDefault();
  EXPECT_EQ(without.fileOf("Glass"), std::nullopt);
}

}  // namespace tollbeam
