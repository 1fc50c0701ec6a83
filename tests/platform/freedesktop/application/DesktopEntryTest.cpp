#include "platform/freedesktop/application/DesktopEntry.h"

#include <gtest/gtest.h>

namespace tollbeam {

TEST(DesktopEntry, ReadsOnlyItsOwnGroup) {
  const DesktopEntry entry(
      "# Name=comment\n[Desktop Entry]\nName = Tollbeam \nHidden=true\n\n"
      "[Desktop Action x]\nName=Other\nExec=other\n");
  EXPECT_EQ(entry.value("Name"), "Tollbeam");
  EXPECT_EQ(entry.value("Exec"), std::nullopt);
  EXPECT_TRUE(entry.isTrue("Hidden"));
  EXPECT_FALSE(entry.isFalse("Hidden"));
  EXPECT_FALSE(entry.isTrue("NoDisplay"));
  EXPECT_FALSE(entry.isFalse("NoDisplay"));
}

TEST(DesktopEntry, KeepsWhatItDoesNotTouch) {
  DesktopEntry entry(
      "# by hand\n[Desktop Entry]\nName=Mine\nHidden=true\n# why\nHidden=true\n\n"
      "[Desktop Action x]\nName=Other\n");
  entry.remove("Hidden");
  entry.set("Name", "Tollbeam");
  entry.set("Exec", "tollbeam");
  EXPECT_EQ(entry.text(),
            "# by hand\n[Desktop Entry]\nName=Tollbeam\n# why\nExec=tollbeam\n\n"
            "[Desktop Action x]\nName=Other\n");
}

TEST(DesktopEntry, MakesAGroupWhereThereIsNone) {
  for (const char* text : {"", "garbage\n", "[Other]\nName=x\n"}) {
    DesktopEntry entry(text);
    EXPECT_EQ(entry.value("Name"), std::nullopt);
    entry.set("Name", "Tollbeam");
    EXPECT_EQ(entry.value("Name"), "Tollbeam") << entry.text();
  }
}

TEST(DesktopEntry, StringsComeBackFromTheirEscapes) {
  for (const char* text : {"", "plain", " leading", "a\nb\tc\rd", "back\\slash", "\\n", "ä € 😀"}) {
    EXPECT_EQ(textOfEntryString(entryString(text)), text);
    EXPECT_EQ(entryString(text).find('\n'), std::string::npos);
  }
}

TEST(DesktopEntry, ExecIsQuotedOnlyWhereItMustBe) {
  EXPECT_EQ(execOf("/opt/Tollbeam.app/bin/tollbeam"), "/opt/Tollbeam.app/bin/tollbeam");
  EXPECT_EQ(execOf("/my apps/tollbeam"), "\"/my apps/tollbeam\"");
}

TEST(DesktopEntry, ExecLeavesToTheShellWhatMayNotStandInAProgramsName) {
  EXPECT_EQ(execOf("/100%/tollbeam"), R"(/bin/sh -c "exec '/100%%/tollbeam'")");
  EXPECT_EQ(execOf("/a=b/tollbeam"), R"(/bin/sh -c "exec '/a=b/tollbeam'")");
  EXPECT_EQ(execOf("/a\"b"), R"(/bin/sh -c "exec '/a\\"b'")");
  EXPECT_EQ(execOf("/it's"), R"(/bin/sh -c "exec '/it'\\"'\\"'s'")");
  EXPECT_EQ(execOf("/a\nb"), R"(/bin/sh -c "exec '/a\nb'")");
}

TEST(DesktopEntry, ExecHasNoWayToWriteWhatSystemdWouldEscapeTwice) {
  for (const char* path : {"/a$b", "/a`b", "/a\\b"}) EXPECT_EQ(execOf(path), std::nullopt);
}

}  // namespace tollbeam
