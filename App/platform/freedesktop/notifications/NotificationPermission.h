// Whether the user lets us notify, as the desktop's permission store remembers it: "yes", "no", or
// no entry while nobody was asked. A desktop without a store lets everyone notify. The store is
// asked when somebody first wants to know and followed from then on. Main thread only.
#pragma once

#include <QDBusVariant>
#include <QObject>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "platform/NotificationCenter.h"
#include "platform/freedesktop/bus/ServiceOwner.h"

class QDBusPendingCallWatcher;

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

  /// Asks for the permission, for a user who has just said that he wants it: grants it unless he
  /// has refused it elsewhere. Never calls `answer` before it returns.
  void request(std::function<void(bool granted)> answer);

 private:
  /// `known` gets the answer to this very question: an earlier one may still be on its way.
  void lookUp(Known known);
  void lookedUp(QDBusPendingCallWatcher* call, const Known& known);
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
