#include "platform/freedesktop/application/BundleFolder.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tollbeam {

namespace {

namespace fs = std::filesystem;

std::string bundleOf(const std::string& executable) {
  constexpr std::string_view kProgram = "/bin/tollbeam";
  if (executable.ends_with(kProgram) && executable.size() > kProgram.size()) {
    return executable.substr(0, executable.size() - kProgram.size());
  }
  return fs::path(executable).parent_path();
}

std::optional<std::string> identifierIn(const std::string& json) {
  const auto info = QJsonDocument::fromJson(QByteArray::fromStdString(json)).object();
  const QString identifier = info.value(QLatin1String("identifier")).toString();
  return identifier.isEmpty() ? std::nullopt : std::optional(identifier.toStdString());
}

}  // namespace

BundleFolder::BundleFolder(const FileManager& files, std::string executable)
    : executable_(std::move(executable)),
      path_(bundleOf(executable_)),
      identifier_(identifierIn(files.contents(path_ + "/Info.json").value_or(""))) {}

std::string BundleFolder::runningExecutable() {
  std::error_code error;
  std::string path = fs::read_symlink("/proc/self/exe", error);
  // The kernel adds this when an update has replaced the program while it runs.
  constexpr std::string_view kDeleted = " (deleted)";
  if (path.ends_with(kDeleted) && !fs::exists(path, error)) {
    path.resize(path.size() - kDeleted.size());
  }
  return path;
}

std::string BundleFolder::pathExtension() const {
  // With its dot; a name that only starts with a dot is hidden, and has none.
  const std::string extension = fs::path(path_).extension();
  return extension.empty() ? extension : extension.substr(1);
}

}  // namespace tollbeam
