// Where this user's files belong, by the XDG base directory rules. Paths carry no final slash. A
// variable that is not an absolute path counts as unset, as those rules say. Main thread only.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tollbeam {

/// The user's home folder: $HOME, else the password file's; absent when neither names one.
[[nodiscard]] std::optional<std::string> homeFolder();

/// $XDG_DATA_HOME, by default ~/.local/share; absent without a home folder.
[[nodiscard]] std::optional<std::string> dataHome();

/// $XDG_CONFIG_HOME, by default ~/.config; absent without a home folder.
[[nodiscard]] std::optional<std::string> configHome();

/// $XDG_CONFIG_DIRS, by default /etc/xdg: the system's folders, the most important first.
[[nodiscard]] std::vector<std::string> configDirs();

}  // namespace tollbeam
