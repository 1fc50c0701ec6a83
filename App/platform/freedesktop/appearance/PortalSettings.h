// The desktop's settings as its portal gives them (org.freedesktop.portal.Settings), kept up to
// date. What the last portal said holds until another one answers, so that its restart does not
// make programs flicker. Never blocks. Main thread only.
#pragma once

#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QStringList>
#include <string_view>
#include <vector>

#include "platform/freedesktop/bus/ServiceOwner.h"
#include "values/Value.h"

namespace tollbeam {

/// Whether a portal that does not run may be started. With its helpers it takes tens of megabytes,
/// which a battery reminder is not to cost a desktop that does without. Allowed on the desktops
/// that announce their colours through the portal alone: there it is part of the desktop, and only
/// not started yet. `currentDesktop` as $XDG_CURRENT_DESKTOP has it.
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
  struct News {
    std::string group;
    std::string key;
    std::optional<Value> value;
  };

  void ask();
  void take(const QDBusMessage& answer);
  static void apply(const News& news, Dictionary& settings);
  void store(Dictionary settings);

  Bus& bus_;
  const QStringList namespaces_;
  Dictionary settings_;
  ServiceOwner owner_;
  int question_ = 0;
  /// Questions without an answer; those to earlier owners count, too.
  int open_ = 0;
  /// The newest one waits for another to end.
  bool unsent_ = false;
  bool asking_ = false;
  /// The newest of each key while a question is open: the answer may have been collected before.
  std::vector<News> heard_;
};

}  // namespace tollbeam
