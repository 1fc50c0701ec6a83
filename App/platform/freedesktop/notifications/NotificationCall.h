// What one notification is on the wire of org.freedesktop.Notifications: a pure function of what is
// to be shown and of what the server can do, so that every hint is tested without a bus.
#pragma once

#include <QStringList>
#include <QVariantList>
#include <functional>
#include <optional>
#include <string>

#include "platform/NotificationCenter.h"

namespace tollbeam {

/// What GetCapabilities said.
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
  /// The file of a named sound, for sounds that are not in the desktop's sound theme; may be empty,
  /// and answers absent to leave a name to the server.
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
