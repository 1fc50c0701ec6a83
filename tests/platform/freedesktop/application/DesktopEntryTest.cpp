#include "platform/freedesktop/application/DesktopEntry.h"

#include <gtest/gtest.h>

namespace tollbeam {

TEST(DesktopEntry, ReadsOnlyItsOwnGroup) {
  const DesktopEntry entry = desktopEntryIn(
      "# Name=comment\n[Desktop Entry]\n#Icon=comment\nName = Tollbeam \r\nHidden=true\n\n"
      "[Desktop Action x]\nName=Other\nExec=other\n");
  EXPECT_EQ(entry, (DesktopEntry{{"Name", "Tollbeam"}, {"Hidden", "true"}}));
}

TEST(DesktopEntry, TakesTheFirstOfEqualKeys) {
  EXPECT_EQ(desktopEntryIn("[Desktop Entry]\nName=1\nName=2\n").value("Name"), "1");
}

TEST(DesktopEntry, IsEmptyWithoutItsGroup) {
  for (const char* text : {"", "garbage\n", "Name=x\n", "[Other]\nName=x\n"}) {
    EXPECT_TRUE(desktopEntryIn(text).isEmpty()) << text;
  }
}

TEST(DesktopEntry, ReadsBackWhatItWrote) {
  const DesktopEntry entry{{"Name", "Tollbeam"}, {"Name[de]", "a=b"}, {"X-Empty", ""}};
  EXPECT_EQ(fileOf(entry), "[Desktop Entry]\nName=Tollbeam\nName[de]=a=b\nX-Empty=\n");
  EXPECT_EQ(desktopEntryIn(fileOf(entry)), entry);
}

TEST(DesktopEntry, ReadsBackEscapedStrings) {
  for (const char* text : {"", "plain", " leading", "a\nb\tc\rd", "back\\slash", "\\n", "ä € 😀"}) {
    EXPECT_EQ(textOfEntryString(entryString(text)), text);
    EXPECT_FALSE(entryString(text).contains('\n'));
  }
}

TEST(DesktopEntry, LeavesUnknownEscapes) { EXPECT_EQ(textOfEntryString(R"(a\xb\)"), R"(a\xb\)"); }

TEST(DesktopEntry, QuotesExecOnlyWhereItMust) {
  EXPECT_EQ(execOf("/opt/Tollbeam.app/bin/tollbeam"), "/opt/Tollbeam.app/bin/tollbeam");
  EXPECT_EQ(execOf("/my apps/tollbeam"), "\"/my apps/tollbeam\"");
}

TEST(DesktopEntry, RunsProgramsWithSpecialCharactersByTheShell) {
  EXPECT_EQ(execOf("/100%/tollbeam"), R"(/bin/sh -c "exec '/100%%/tollbeam'")");
  EXPECT_EQ(execOf("/a=b/tollbeam"), R"(/bin/sh -c "exec '/a=b/tollbeam'")");
  EXPECT_EQ(execOf("/a\"b"), R"(/bin/sh -c "exec '/a\\"b'")");
  EXPECT_EQ(execOf("/it's"), R"(/bin/sh -c "exec '/it'\\"'\\"'s'")");
  EXPECT_EQ(execOf("/a\nb"), R"(/bin/sh -c "exec '/a\nb'")");
}

TEST(DesktopEntry, HasNoExecForPathsThatSystemdMisreads) {
  for (const char* path : {"/a$b", "/a`b", "/a\\b"}) EXPECT_EQ(execOf(path), std::nullopt);
}

}  // namespace tollbeam
