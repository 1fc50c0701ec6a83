#include "platform/freedesktop/application/AutostartEntry.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/freedesktop/application/DesktopEntry.h"
#include "platform/freedesktop/files/Links.h"
#include "platform/freedesktop/files/PosixFileManager.h"
#include "platform/freedesktop/files/UserFolders.h"

namespace tollbeam {

namespace {

constexpr const char* kFile = "/org.tollbeam.Tollbeam.desktop";
constexpr const char* kUnusablePath =
    "The program is in a folder whose name has a $, a ` or a \\. Not every desktop can start it "
    "from there.";
constexpr const char* kEnabledHere = "X-GNOME-Autostart-enabled";

bool programIsGone(const DesktopEntry& entry) {
  const auto program = entry.value("TryExec");
  if (!program) return false;
  const std::string path = textOfEntryString(*program);
  // A bare name is looked up in the session's $PATH, which is not ours to guess.
  return path.starts_with('/') && ::access(path.c_str(), X_OK) != 0;
}

LoginItem::Status statusOf(const DesktopEntry& entry) {
  if (entry.isTrue("Hidden") || programIsGone(entry)) return LoginItem::Status::notRegistered;
  if (entry.isFalse(kEnabledHere)) return LoginItem::Status::requiresApproval;
  return LoginItem::Status::enabled;
}

}  // namespace

AutostartEntry::AutostartEntry(FileManager& files, std::string executable, Folders folders)
    : files_(files), executable_(std::move(executable)), folders_(std::move(folders)) {}

AutostartEntry::Folders AutostartEntry::standardFolders() {
  Folders folders;
  if (auto user = configHome()) folders.user = *user + "/autostart";
  for (const auto& folder : configDirs()) folders.system.push_back(folder + "/autostart");
  return folders;
}

std::string AutostartEntry::userFile() const { return folders_.user.value_or("") + kFile; }

std::optional<std::string> AutostartEntry::systemEntry() const {
  for (const auto& folder : folders_.system) {
    if (auto text = files_.contents(folder + kFile)) return text;
  }
  return std::nullopt;
}

LoginItem::Status AutostartEntry::status() const {
  if (folders_.user) {
    if (const auto text = files_.contents(userFile())) return statusOf(DesktopEntry(*text));
  }
  if (const auto text = systemEntry()) return statusOf(DesktopEntry(*text));
  return Status::notRegistered;
}

std::optional<Message> AutostartEntry::registerItem() {
  if (!folders_.user) return errorText(ENOENT);
  const auto exec = execOf(executable_);
  if (!exec) return kUnusablePath;
  const auto existing = files_.contents(userFile());
  DesktopEntry entry = existing ? DesktopEntry(*existing) : DesktopEntry();
  if (!entry.value("Type")) entry.set("Type", "Application");
  if (!entry.value("Name")) entry.set("Name", "Tollbeam");
  if (!entry.value("Icon")) entry.set("Icon", "org.tollbeam.Tollbeam");
  entry.set("Exec", *exec);
  entry.set("TryExec", entryString(executable_));
  entry.set(kEnabledHere, "true");
  entry.remove("Hidden");
  files_.createDirectory(*folders_.user);
  return files_.write(userFile(), entry.text());
}

std::optional<Message> AutostartEntry::unregisterItem() {
  if (!folders_.user) return errorText(ENOENT);
  if (!systemEntry()) {
    if (::unlink(userFile().c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) {
      return std::nullopt;
    }
    return errorText(errno);
  }
  // Only an entry of the user's own hides the system's.
  const auto existing = files_.contents(userFile());
  DesktopEntry entry = existing ? DesktopEntry(*existing) : DesktopEntry();
  if (!entry.value("Type")) entry.set("Type", "Application");
  if (!entry.value("Name")) entry.set("Name", "Tollbeam");
  entry.set("Hidden", "true");
  files_.createDirectory(*folders_.user);
  return files_.write(userFile(), entry.text());
}

}  // namespace tollbeam
