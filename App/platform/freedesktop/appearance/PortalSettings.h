// The desktop's settings as its portal gives them (org.freedesktop.portal.Settings), kept up to
// date. They are kept until another portal answers, so that a restart does not make programs
// flicker. Never blocks. Main thread only.
#pragma once

#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QStringList>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/freedesktop/bus/ServiceOwner.h"
#include "values/Value.h"

namespace tollbeam {

/// Whether a portal that does not run may be started. With its helpers it takes tens of megabytes,
/// too much on a desktop that does without. Allowed on the desktops that publish their colours
/// through the portal alone: there it is part of the desktop, and only not started yet.
/// `currentDesktop` as in $XDG_CURRENT_DESKTOP.
[[nodiscard]] Activation portalActivationOn(std::string_view currentDesktop);

class PortalSettings : public QObject {
  Q_OBJECT

 public:
  /// Follows the settings of these namespaces. `bus` outlives this object.
  PortalSettings(Bus& bus, QStringList namespaces, Activation activation);

  /// A dictionary of the namespaces; empty until a portal has answered.
  [[nodiscard]] const Dictionary& settings() const { return settings_; }

 Q_SIGNALS:
  void changed();

 private Q_SLOTS:
  void onSettingChanged(const QString& group, const QString& key, const QDBusVariant& value,
                        const QDBusMessage& message);

 private:
  /// A setting's new value by its namespace and key; absent when it is of an unknown kind.
  using Changes = std::map<std::pair<std::string, std::string>, std::optional<Value>>;

  void ask();
  void take(const QDBusMessage& answer);
  void store(Dictionary settings, const Changes& changes);

  Bus& bus_;
  const QStringList namespaces_;
  Dictionary settings_;
  ServiceOwner owner_;
  int question_ = 0;
  /// Questions without an answer, including those to earlier owners.
  int open_ = 0;
  /// The newest question is sent when another has ended.
  bool unsent_ = false;
  bool asking_ = false;
  /// Received while a question is open: the answer may have been collected before.
  Changes changes_;
};

}  // namespace tollbeam
