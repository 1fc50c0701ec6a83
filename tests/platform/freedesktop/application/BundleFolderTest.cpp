#include "platform/freedesktop/application/BundleFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/freedesktop/files/PosixFileManager.h"
#include "support/Sandbox.h"

namespace tollbeam {

namespace {

BundleFolder bundleOf(const std::string& executable) {
  return BundleFolder(PosixFileManager(), executable);
}

}  // namespace

TEST(BundleFolder, IsTheFolderAboveBin) {
  const auto bundle = bundleOf("/opt/Tollbeam.app/bin/tollbeam");
  EXPECT_EQ(bundle.path(), "/opt/Tollbeam.app");
  EXPECT_EQ(bundle.resources(), "/opt/Tollbeam.app/resources");
  EXPECT_EQ(bundle.executable(), "/opt/Tollbeam.app/bin/tollbeam");
  EXPECT_EQ(bundle.pathExtension(), "app");
}

TEST(BundleFolder, IsTheFolderOfAProgramElsewhere) {
  EXPECT_EQ(bundleOf("/home/ada/build/tollbeam").path(), "/home/ada/build");
  EXPECT_EQ(bundleOf("/opt/Tollbeam.app/bin/other").path(), "/opt/Tollbeam.app/bin");
  EXPECT_EQ(bundleOf("/tollbeam").path(), "/");
  EXPECT_EQ(bundleOf("/bin/tollbeam").path(), "/bin");
}

TEST(BundleFolder, KeepsTheExtensionAsWritten) {
  EXPECT_EQ(bundleOf("/a/Tollbeam.APP/bin/tollbeam").pathExtension(), "APP");
  EXPECT_EQ(bundleOf("/a/Tollbeam.app.bak/bin/tollbeam").pathExtension(), "bak");
  EXPECT_EQ(bundleOf("/a/Tollbeam./bin/tollbeam").pathExtension(), "");
  EXPECT_EQ(bundleOf("/a.app/Tollbeam/bin/tollbeam").pathExtension(), "");
  EXPECT_EQ(bundleOf("/a/.app/bin/tollbeam").pathExtension(), "");
}

TEST(BundleFolder, ReadsTheIdentifierInTheInformationFile) {
  const test::Folder folder;
  const auto identifier = [&](const std::string& json) {
    test::put(folder / "Info.json", json);
    return bundleOf(folder / "bin/tollbeam").identifier();
  };
  EXPECT_EQ(bundleOf(folder / "bin/tollbeam").identifier(), std::nullopt);
  EXPECT_EQ(identifier(R"({"identifier": "org.tollbeam.Tollbeam", "version": "1"})"),
            "org.tollbeam.Tollbeam");
  for (const char* damaged : {"", "{", "[]", "{}", R"({"identifier": ""})", R"({"identifier": 1})",
                              R"({"Identifier": "x"})", "{\"identifier\": \"\xff\"}"}) {
    EXPECT_EQ(identifier(damaged), std::nullopt) << damaged;
  }
}

TEST(BundleFolder, FindsTheRunningProgram) {
  EXPECT_EQ(BundleFolder::runningExecutable(),
            std::filesystem::canonical("/proc/self/exe").string());
}

}  // namespace tollbeam
