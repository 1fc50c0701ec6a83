// The application bundle on this system: a folder with bin/tollbeam, resources/ and Info.json,
// whose {"identifier": …} names the application. For a program outside such a folder it is the
// folder that holds the program, which then is no application.
#pragma once

#include <optional>
#include <string>

#include "platform/FileManager.h"
#include "platform/MainBundle.h"

namespace tollbeam {

class BundleFolder final : public MainBundle {
 public:
  /// `executable`: the absolute path of the program. The information file is read once, here.
  BundleFolder(const FileManager& files, std::string executable);

  /// The path of the running program, links resolved; empty where the kernel does not give it.
  [[nodiscard]] static std::string runningExecutable();

  [[nodiscard]] std::string pathExtension() const override;
  [[nodiscard]] std::optional<std::string> identifier() const override { return identifier_; }

  [[nodiscard]] const std::string& executable() const { return executable_; }
  /// Without a final slash.
  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string resources() const { return path_ + "/resources"; }

 private:
  std::string executable_;
  std::string path_;
  std::optional<std::string> identifier_;
};

}  // namespace tollbeam
