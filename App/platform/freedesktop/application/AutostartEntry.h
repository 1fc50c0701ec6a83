// Launch at login by an XDG autostart entry in the user's configuration folder. The file alone
// holds the setting, because the user and the desktop's own settings switch it too.
//
// An entry of the same name in the system's folders counts while the user has none; taking that
// back needs a user's entry that hides it. Keys that others put into the user's entry stay, its
// comments and other groups do not. Main thread only.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/FileManager.h"
#include "platform/LoginItem.h"
#include "platform/freedesktop/application/DesktopEntry.h"

namespace tollbeam {

class AutostartEntry final : public LoginItem {
 public:
  struct Folders {
    /// Absent: nothing can be registered.
    std::optional<std::string> user;
    /// The most important first.
    std::vector<std::string> system;
  };

  /// `executable`: the absolute path of the program to start.
  AutostartEntry(FileManager& files, std::string executable, Folders folders = standardFolders());

  [[nodiscard]] static Folders standardFolders();

  /// Fails and changes nothing where the program's path cannot be written so that every desktop
  /// starts it.
  std::optional<Message> registerItem() override;
  std::optional<Message> unregisterItem() override;

  /// Hidden entries, and those whose program is gone, are not registered; one that the desktop has
  /// switched off (X-GNOME-Autostart-enabled=false) requires approval.
  [[nodiscard]] Status status() const override;

 private:
  [[nodiscard]] std::string userFile() const;
  [[nodiscard]] std::optional<std::string> systemEntry() const;
  [[nodiscard]] DesktopEntry userEntry() const;
  std::optional<std::string> write(const DesktopEntry& entry);

  FileManager& files_;
  std::string executable_;
  Folders folders_;
};

}  // namespace tollbeam
