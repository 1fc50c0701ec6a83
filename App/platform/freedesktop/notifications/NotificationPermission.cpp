#include "platform/freedesktop/notifications/NotificationPermission.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMap>
#include <QStringList>
#include <utility>

namespace tollbeam {

namespace {

const QString kService = QStringLiteral("org.freedesktop.impl.portal.PermissionStore");
const QString kPath = QStringLiteral("/org/freedesktop/impl/portal/PermissionStore");
const QString kTable = QStringLiteral("notifications");
const QString kId = QStringLiteral("notification");
const QString kYes = QStringLiteral("yes");
const QString kNo = QStringLiteral("no");

QDBusMessage method(const char* name) {
  return QDBusMessage::createMethodCall(kService, kPath, kService, QLatin1String(name));
}

AuthorizationStatus statusIn(const QDBusMessage& reply, const QString& applicationId) {
  // First the permissions by application, a{sas}, then data that is none of ours.
  const auto argument = reply.arguments().value(0).value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("a{sas}")) {
    return AuthorizationStatus::notDetermined;
  }
  const auto permissions = qdbus_cast<QMap<QString, QStringList>>(argument).value(applicationId);
  if (permissions.contains(kNo)) return AuthorizationStatus::denied;
  if (permissions.contains(kYes)) return AuthorizationStatus::authorized;
  return AuthorizationStatus::notDetermined;
}

/// Absent when the store said nothing.
std::optional<AuthorizationStatus> statusFor(const QDBusError& error) {
  if (error.name() == QLatin1String("org.freedesktop.portal.Error.NotFound")) {
    return AuthorizationStatus::notDetermined;
  }
  if (error.type() == QDBusError::NoReply || error.type() == QDBusError::TimedOut ||
      error.type() == QDBusError::Disconnected) {
    return std::nullopt;
  }
  // No store, or one that will not talk to us: nobody keeps us from notifying.
  return AuthorizationStatus::authorized;
}

}  // namespace

NotificationPermission::NotificationPermission(Bus& bus, const std::string& applicationId,
                                               std::chrono::milliseconds patience)
    : bus_(bus),
      applicationId_(QString::fromStdString(applicationId)),
      patience_(static_cast<int>(patience.count())),
      owner_(bus_, kService, Activation::forbidden) {
  connect(&owner_, &ServiceOwner::changed, this, [this] {
    // A store that came after we did without one, or another than the one that we asked.
    if (status_ && !owner_.name().isEmpty()) lookUp([](AuthorizationStatus) {});
  });
  // Nothing is believed on the word of the signal: it only makes us ask the store.
  bus_.listen(kPath, kService, QStringLiteral("Changed"), {}, this,
              SLOT(changed(QString, QString)));
}

void NotificationPermission::whenKnown(Known known) {
  if (status_) {
    known(*status_);
  } else {
    lookUp(std::move(known));
  }
}

void NotificationPermission::askAgain(Known known) { lookUp(std::move(known)); }

void NotificationPermission::request(std::function<void(bool granted)> answer) {
  lookUp([this, answer = std::move(answer)](AuthorizationStatus status) {
    if (status == AuthorizationStatus::notDetermined) {
      grant(answer);
    } else {
      answer(status == AuthorizationStatus::authorized);
    }
  });
}

void NotificationPermission::lookUp(Known known) {
  QDBusMessage message = method("Lookup");
  message << kTable << kId;
  auto* call = new QDBusPendingCallWatcher(bus_.asyncCall(message, patience_), this);
  connect(call, &QDBusPendingCallWatcher::finished, this,
          [this, known = std::move(known)](QDBusPendingCallWatcher* finished) {
            lookedUp(finished, known);
          });
}

void NotificationPermission::lookedUp(QDBusPendingCallWatcher* call, const Known& known) {
  call->deleteLater();
  const auto status = call->isError() ? statusFor(call->error())
                                      : std::optional(statusIn(call->reply(), applicationId_));
  if (status) status_ = status;
  // With nobody to ask, notifying is no worse than on a desktop without a store.
  known(status_.value_or(AuthorizationStatus::authorized));
}

void NotificationPermission::grant(std::function<void(bool granted)> answer) {
  constexpr bool kCreateTable = true;
  QDBusMessage message = method("SetPermission");
  message << kTable << kCreateTable << kId << applicationId_ << QStringList{kYes};
  auto* call = new QDBusPendingCallWatcher(bus_.asyncCall(message, patience_), this);
  connect(call, &QDBusPendingCallWatcher::finished, this,
          [this, answer = std::move(answer)](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            if (!finished->isError()) status_ = AuthorizationStatus::authorized;
            // If it could not be written down we are shown all the same, and asked again later.
            answer(true);
          });
}

void NotificationPermission::changed(const QString& table, const QString& id) {
  if (status_ && table == kTable && id == kId) lookUp([](AuthorizationStatus) {});
}

}  // namespace tollbeam
