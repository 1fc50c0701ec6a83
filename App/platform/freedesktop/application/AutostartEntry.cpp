#include "platform/freedesktop/application/AutostartEntry.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/freedesktop/application/DesktopEntry.h"
#include "platform/freedesktop/files/PosixFileManager.h"
#include "platform/freedesktop/files/UserFolders.h"

namespace tollbeam {

namespace {

constexpr const char* kFile = "/org.tollbeam.Tollbeam.desktop";
constexpr const char* kUnusablePath =
    "The program is in a folder whose name has a $, a ` or a \\. Not every desktop can start it "
    "from there.";
constexpr const char* kEnabledHere = "X-GNOME-Autostart-enabled";

bool isProgramGone(const DesktopEntry& entry) {
  const QByteArray program = textOfEntryString(entry.value("TryExec"));
  // A bare name is looked up in the session's $PATH, which we do not know.
  return program.startsWith('/') && ::access(program.constData(), X_OK) != 0;
}

LoginItem::Status statusOf(const std::string& file) {
  const DesktopEntry entry = desktopEntryIn(QByteArray::fromStdString(file));
  // "1" and "0" are flags of old entries that desktops still honour.
  const QByteArray hidden = entry.value("Hidden");
  const QByteArray enabled = entry.value(kEnabledHere);
  if (hidden == "true" || hidden == "1" || isProgramGone(entry)) {
    return LoginItem::Status::notRegistered;
  }
  return enabled == "false" || enabled == "0" ? LoginItem::Status::requiresApproval
                                              : LoginItem::Status::enabled;
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
  auto file = folders_.user ? files_.contents(userFile()) : std::nullopt;
  if (!file) file = systemEntry();
  return file ? statusOf(*file) : Status::notRegistered;
}

DesktopEntry AutostartEntry::userEntry() const {
  const std::string file = files_.contents(userFile()).value_or("");
  DesktopEntry entry = desktopEntryIn(QByteArray::fromStdString(file));
  // Those that every entry must have, and our icon.
  for (const auto& [key, value] : {std::pair{"Type", "Application"},
                                   {"Name", "Tollbeam"},
                                   {"Icon", "org.tollbeam.Tollbeam"}}) {
    if (!entry.contains(key)) entry.insert(key, value);
  }
  return entry;
}

std::optional<std::string> AutostartEntry::write(const DesktopEntry& entry) {
  files_.createDirectory(*folders_.user);
  return files_.write(userFile(), fileOf(entry).toStdString());
}

std::optional<Message> AutostartEntry::registerItem() {
  if (!folders_.user) return errorText(ENOENT);
  const auto program = QByteArray::fromStdString(executable_);
  const auto exec = execOf(program);
  if (!exec) return kUnusablePath;
  DesktopEntry entry = userEntry();
  entry.insert("Exec", *exec);
  entry.insert("TryExec", entryString(program));
  entry.insert(kEnabledHere, "true");
  entry.remove("Hidden");
  return write(entry);
}

std::optional<Message> AutostartEntry::unregisterItem() {
  if (!folders_.user) return errorText(ENOENT);
  if (systemEntry()) {
    // Only an entry of the user's own hides the system's.
    DesktopEntry entry = userEntry();
    entry.insert("Hidden", "true");
    return write(entry);
  }
  if (::unlink(userFile().c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) return std::nullopt;
  return errorText(errno);
}

}  // namespace tollbeam
