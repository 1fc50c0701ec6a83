#include "platform/freedesktop/application/BundleFolder.h"

#include <unistd.h>

#include <utility>

#include "platform/freedesktop/defaults/ValueJson.h"
#include "platform/freedesktop/files/Links.h"

namespace tollbeam {

namespace {

constexpr std::string_view kProgram = "/bin/tollbeam";

std::string bundleOf(const std::string& executable) {
  if (executable.ends_with(kProgram) && executable.size() > kProgram.size()) {
    return executable.substr(0, executable.size() - kProgram.size());
  }
  return withoutFinalSlash(folderOf(executable));
}

std::optional<std::string> identifierIn(const std::optional<std::string>& json) {
  const auto info = json ? dictionaryFromJson(*json) : std::nullopt;
  const Value* identifier = info ? find(*info, "identifier") : nullptr;
  const std::string* text = identifier ? identifier->text() : nullptr;
  if (!text || text->empty()) return std::nullopt;
  return *text;
}

}  // namespace

BundleFolder::BundleFolder(const FileManager& files, std::string executable)
    : executable_(std::move(executable)),
      path_(bundleOf(executable_)),
      identifier_(identifierIn(files.contents(path_ + "/Info.json"))) {}

std::string BundleFolder::runningExecutable() {
  auto path = nextLink("/proc/self/exe").value_or("");
  // The kernel says so when an update has replaced the program under us.
  constexpr std::string_view kDeleted = " (deleted)";
  if (path.ends_with(kDeleted) && ::access(path.c_str(), F_OK) != 0) {
    path.resize(path.size() - kDeleted.size());
  }
  return path;
}

std::string BundleFolder::pathExtension() const {
  const std::string name = nameOf(path_);
  const auto dot = name.rfind('.');
  // A name that only starts with a dot is hidden, and has no extension.
  if (dot == std::string::npos || dot == 0) return {};
  return name.substr(dot + 1);
}

}  // namespace tollbeam
