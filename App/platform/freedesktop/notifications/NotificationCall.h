// The arguments of one call of org.freedesktop.Notifications.Notify: a pure function of the content
// and of the server's capabilities, so that every hint is tested without a bus.
#pragma once

#include <QStringList>
#include <QVariantList>
#include <functional>
#include <optional>
#include <string>

#include "platform/NotificationCenter.h"

namespace tollbeam {

/// Of those that GetCapabilities lists, the ones that matter to us.
struct ServerCapabilities {
  bool actions = false;
  bool bodyMarkup = false;
  bool sound = false;

  [[nodiscard]] static ServerCapabilities from(const QStringList& names);

  friend bool operator==(const ServerCapabilities&, const ServerCapabilities&) = default;
};

/// How the application presents itself.
struct NotificationLook {
  std::string applicationName = "Tollbeam";
  /// A name in the icon theme or an absolute path.
  std::string icon = "org.tollbeam.Tollbeam";
  std::string desktopEntry = "org.tollbeam.Tollbeam";
  /// The file of a named sound that is not in the desktop's sound theme; absent for a name that the
  /// server should look up. May be empty.
  std::function<std::optional<std::string>(const std::string& name)> soundFile = {};
};

/// One request, with its category's actions and the sound that it may make.
struct Bubble {
  Message title;
  Message body;
  std::vector<NotificationAction> actions;
  /// Absent: silent.
  std::optional<NotificationSound> sound;
};

/// The arguments of Notify.
[[nodiscard]] QVariantList notifyArguments(const Bubble& bubble, const NotificationLook& look,
                                           const ServerCapabilities& server, uint replacesId);

}  // namespace tollbeam
