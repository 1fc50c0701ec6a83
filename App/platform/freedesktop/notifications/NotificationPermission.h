// Whether the user permits our notifications, as the desktop's permission store remembers it:
// "yes", "no", or no entry while the user has not been asked. A desktop without a store permits
// all. The store is asked when the status is first needed and followed from then on. Main thread
// only.
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "platform/NotificationCenter.h"
#include "platform/freedesktop/bus/ServiceOwner.h"

namespace tollbeam {

class NotificationPermission : public QObject {
  Q_OBJECT

 public:
  using Known = std::function<void(AuthorizationStatus)>;

  /// `bus` outlives this object. A store that does not answer within `patience` counts as none,
  /// until it does.
  NotificationPermission(Bus& bus, const std::string& applicationId,
                         std::chrono::milliseconds patience = std::chrono::seconds(2));

  /// Calls `known` at once when the store has answered before, else after its answer.
  void whenKnown(Known known);

  /// Asks the store again; never calls `known` before it returns.
  void askAgain(Known known);

  /// Grants the permission, for a user who has just switched alerts on, unless the desktop's
  /// settings refuse it. Never calls `answer` before it returns.
  void request(std::function<void(bool granted)> answer);

 private:
  void grant(std::function<void(bool granted)> answer);

  // The parameters are those of the store's signal, which the bus matches by signature.
  Q_SLOT void changed(const QString& table, const QString& id);

  Bus& bus_;
  QString applicationId_;
  int patience_;
  ServiceOwner owner_;
  /// Absent until the store has answered, or is known to be missing.
  std::optional<AuthorizationStatus> status_;
};

}  // namespace tollbeam
