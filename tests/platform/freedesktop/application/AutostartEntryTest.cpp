#include "platform/freedesktop/application/AutostartEntry.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <array>
#include <filesystem>

#include "platform/freedesktop/application/DesktopEntry.h"
#include "platform/freedesktop/files/PosixFileManager.h"
#include "support/PrivateBus.h"
#include "support/Sandbox.h"
#include "texts/Translated.h"

namespace tollbeam {

namespace {

namespace fs = std::filesystem;
using Status = LoginItem::Status;
using test::bytesOf;
using test::put;

class AutostartEntryTest : public testing::Test {
 protected:
  AutostartEntryTest() { makeProgram(program); }

  static void makeProgram(const std::string& path) {
    put(path, "#!/bin/sh\n: > \"$0.started\"\n");
    ::chmod(path.c_str(), 0755);
  }
  [[nodiscard]] AutostartEntry item() { return AutostartEntry(files, program, folders); }
  [[nodiscard]] std::string userFile() const { return folder / "user/autostart/" + kName; }
  void userEntry(const std::string& keys) const {
    fs::create_directories(folder / "user/autostart");
    put(userFile(), "[Desktop Entry]\n" + keys);
  }
  void systemEntry(const std::string& folderName, const std::string& keys) const {
    fs::create_directories(folder / folderName);
    put(folder / folderName + '/' + kName, "[Desktop Entry]\n" + keys);
  }
  /// The value that the user's entry has for the key; empty without one.
  [[nodiscard]] std::string written(const char* key) const {
    const std::string file = bytesOf(userFile()).value_or("");
    return desktopEntryIn(QByteArray::fromStdString(file)).value(key).toStdString();
  }

  /// What the tool prints.
  static std::string outputOf(const QString& tool, const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(tool, arguments);
    EXPECT_TRUE(process.waitForFinished(test::kPatience));
    return process.readAll().toStdString();
  }

  static constexpr std::array kOddNames{
      "plain",  "two words", "100% sure",   "%f",      "%%",        "a=b",   "quo\"te",
      "it's",   "'",         "semi;colon&", "ünïcode", "tab\there", "#hash", "new\nline",
      "tilde~", "(paren)",   "star*?",      "!",       "'%\"="};
  static constexpr const char* kName = "org.tollbeam.Tollbeam.desktop";
  static constexpr const char* kUnit = "app-org.tollbeam.Tollbeam@autostart.service";
  test::Folder folder;
  std::string program = folder / "tollbeam";
  AutostartEntry::Folders folders{.user = folder / "user/autostart",
                                  .system = {folder / "first", folder / "second"}};
  PosixFileManager files;
};

}  // namespace

TEST_F(AutostartEntryTest, TakesTheFoldersFromTheEnvironment) {
  const test::Environment home("XDG_CONFIG_HOME", "/config");
  const test::Environment dirs("XDG_CONFIG_DIRS", "/one:/two");
  const auto standard = AutostartEntry::standardFolders();
  EXPECT_EQ(standard.user, "/config/autostart");
  EXPECT_EQ(standard.system, (std::vector<std::string>{"/one/autostart", "/two/autostart"}));
}

TEST_F(AutostartEntryTest, SwitchesOnAndOff) {
  EXPECT_EQ(item().status(), Status::notRegistered);
  EXPECT_EQ(item().registerItem(), std::nullopt);
  EXPECT_EQ(item().status(), Status::enabled);
  EXPECT_EQ(written("Exec"), program);
  EXPECT_EQ(item().registerItem(), std::nullopt);
  EXPECT_EQ(item().unregisterItem(), std::nullopt);
  EXPECT_EQ(item().status(), Status::notRegistered);
  EXPECT_FALSE(fs::exists(userFile()));
  EXPECT_EQ(item().unregisterItem(), std::nullopt);
}

TEST_F(AutostartEntryTest, ReadsTheDesktopsOwnSwitches) {
  userEntry("Exec=" + program + "\n");
  EXPECT_EQ(item().status(), Status::enabled);
  for (const char* yes : {"true", "1"}) {
    userEntry("Exec=" + program + "\nHidden=" + yes + "\n");
    EXPECT_EQ(item().status(), Status::notRegistered);
  }
  for (const char* no : {"false", "0"}) {
    userEntry("Exec=" + program + "\nHidden=" + no + "\nX-GNOME-Autostart-enabled=" + no + "\n");
    EXPECT_EQ(item().status(), Status::requiresApproval);
  }
}

TEST_F(AutostartEntryTest, RegisteringSwitchesOnWhatWasSwitchedOff) {
  userEntry(
      "Name=Mine\nExec=/old\nHidden=true\nX-GNOME-Autostart-enabled=false\nOnlyShowIn=XFCE;\n");
  EXPECT_EQ(item().registerItem(), std::nullopt);
  EXPECT_EQ(item().status(), Status::enabled);
  EXPECT_EQ(written("Exec"), program);
  EXPECT_EQ(written("Name"), "Mine");
  EXPECT_EQ(written("OnlyShowIn"), "XFCE;");
  EXPECT_EQ(written("X-GNOME-Autostart-enabled"), "true");
}

TEST_F(AutostartEntryTest, IsNotRegisteredWhenTheProgramIsGone) {
  item().registerItem();
  fs::remove(program);
  EXPECT_EQ(item().status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, FollowsTheSystemsEntryUntilTheUserHidesIt) {
  systemEntry("second", "Exec=tollbeam\nTryExec=tollbeam\n");
  EXPECT_EQ(item().status(), Status::enabled);
  EXPECT_EQ(item().unregisterItem(), std::nullopt);
  EXPECT_EQ(item().status(), Status::notRegistered);
  EXPECT_EQ(written("Hidden"), "true");
  EXPECT_EQ(item().registerItem(), std::nullopt);
  EXPECT_EQ(item().status(), Status::enabled);
}

TEST_F(AutostartEntryTest, TakesTheEntryOfTheMostImportantSystemFolder) {
  systemEntry("first", "Hidden=true\n");
  systemEntry("second", "Exec=tollbeam\n");
  EXPECT_EQ(item().status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, GivesTheReasonOfAFailedChange) {
  put(folder / "user", "a file where the folder should be");
  EXPECT_EQ(item().registerItem(), "Not a directory");
  EXPECT_EQ(item().status(), Status::notRegistered);
  EXPECT_EQ(item().unregisterItem(), std::nullopt);
  folders.user = std::nullopt;
  EXPECT_EQ(item().registerItem(), "No such file or directory");
}

TEST_F(AutostartEntryTest, ReportsAnEntryThatCannotBeDeleted) {
  userEntry("Exec=" + program + "\n");
  ::chmod((folder / "user/autostart").c_str(), 0555);
  {
    const test::OrdinaryUser user;
    EXPECT_EQ(item().unregisterItem(), "Permission denied");
    EXPECT_EQ(item().status(), Status::enabled);
  }
  ::chmod((folder / "user/autostart").c_str(), 0755);
}

TEST_F(AutostartEntryTest, WritesAValidDesktopEntry) {
  const QString tool = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
  if (tool.isEmpty()) GTEST_SKIP() << "desktop-file-validate is not installed";
  item().registerItem();
  QProcess validator;
  validator.start(tool, {QString::fromStdString(userFile())});
  ASSERT_TRUE(validator.waitForFinished(test::kPatience));
  EXPECT_EQ(validator.exitCode(), 0) << validator.readAllStandardOutput().toStdString();
}

// Started by GLib's own tool, as many desktops start it.
TEST_F(AutostartEntryTest, GLibStartsTheProgramWhateverItsPath) {
  const QString tool = QStandardPaths::findExecutable(QStringLiteral("gio"));
  if (tool.isEmpty()) GTEST_SKIP() << "gio is not installed";
  for (const char* name : kOddNames) {
    program = folder / name;
    makeProgram(program);
    ASSERT_EQ(item().registerItem(), std::nullopt);
    EXPECT_EQ(item().status(), Status::enabled) << name;
    QProcess launcher;
    launcher.start(tool, {QStringLiteral("launch"), QString::fromStdString(userFile())});
    ASSERT_TRUE(launcher.waitForFinished(test::kPatience));
    EXPECT_TRUE(test::waitFor([&] { return fs::exists(program + ".started"); }))
        << name << ": " << written("Exec") << launcher.readAllStandardError().toStdString();
  }
}

// The desktops that let systemd start their programs read it twice: systemd's generator makes a
// unit of the entry, and its manager reads the unit.
TEST_F(AutostartEntryTest, SystemdStartsTheProgramWhateverItsPath) {
  const QString generator =
      QStringLiteral("/usr/lib/systemd/user-generators/systemd-xdg-autostart-generator");
  const QString analyze = QStandardPaths::findExecutable(QStringLiteral("systemd-analyze"));
  if (!QFile::exists(generator) || analyze.isEmpty()) GTEST_SKIP() << "systemd is not installed";
  const test::Environment configuration("XDG_CONFIG_HOME", folder / "user");
  const test::Environment system("XDG_CONFIG_DIRS", folder / "nothing");
  const test::Environment runtime("XDG_RUNTIME_DIR", folder.path());
  for (const char* name : kOddNames) {
    program = folder / name;
    makeProgram(program);
    ASSERT_EQ(item().registerItem(), std::nullopt);
    fs::remove_all(folder / "units");
    fs::create_directory(folder / "units");
    const QString units = QString::fromStdString(folder / "units");
    EXPECT_EQ(outputOf(generator, {units, units, units}), "") << name;
    const std::string unit = folder / "units/" + kUnit;
    ASSERT_TRUE(fs::exists(unit)) << name;
    EXPECT_EQ(outputOf(analyze, {QStringLiteral("--user"), QStringLiteral("--man=no"),
                                 QStringLiteral("verify"), QString::fromStdString(unit)}),
              "")
        << name << ": " << bytesOf(unit).value_or("");
  }
}

TEST_F(AutostartEntryTest, RefusesAPathThatSystemdMisreads) {
  for (const char* name : {"back\\slash", "dol$HOME", "tick`id`", "a\\nb", "\\s"}) {
    program = folder / name;
    makeProgram(program);
    const auto reason = item().registerItem();
    ASSERT_NE(reason, std::nullopt) << name;
    EXPECT_TRUE(isTranslatable(*reason));
    EXPECT_EQ(item().status(), Status::notRegistered) << name;
    EXPECT_FALSE(fs::exists(userFile())) << name;
  }
}

}  // namespace tollbeam
