#include "platform/freedesktop/notifications/NotificationPermission.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QMap>
#include <QStringList>
#include <utility>

#include "platform/freedesktop/bus/WhenFinished.h"

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
  // First the permissions by application, a{sas}, then data that we do not use.
  const auto argument = reply.arguments().value(0).value<QDBusArgument>();
  if (argument.currentSignature() != QLatin1String("a{sas}")) {
    return AuthorizationStatus::notDetermined;
  }
  const auto permissions = qdbus_cast<QMap<QString, QStringList>>(argument).value(applicationId);
  if (permissions.contains(kNo)) return AuthorizationStatus::denied;
  if (permissions.contains(kYes)) return AuthorizationStatus::authorized;
  return AuthorizationStatus::notDetermined;
}

/// Absent when the store did not answer.
std::optional<AuthorizationStatus> statusFor(const QDBusError& error) {
  if (error.name() == QLatin1String("org.freedesktop.portal.Error.NotFound")) {
    return AuthorizationStatus::notDetermined;
  }
  if (error.type() == QDBusError::NoReply || error.type() == QDBusError::TimedOut ||
      error.type() == QDBusError::Disconnected) {
    return std::nullopt;
  }
  // No store, or one that refuses us: nothing forbids notifications.
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
    // Another store than the one that was asked, or the first one.
    if (status_ && !owner_.name().isEmpty()) askAgain([](AuthorizationStatus) {});
  });
  // The signal may come from anyone: it only makes us ask the store.
  bus_.listen(kPath, kService, QStringLiteral("Changed"), {}, this,
              SLOT(changed(QString, QString)));
}

void NotificationPermission::whenKnown(Known known) {
  if (status_) {
    known(*status_);
  } else {
    askAgain(std::move(known));
  }
}

void NotificationPermission::askAgain(Known known) {
  QDBusMessage message = method("Lookup");
  message << kTable << kId;
  // Goes by this answer: an earlier one may still be on its way.
  whenFinished(bus_.asyncCall(message, patience_), this,
               [this, known = std::move(known)](const QDBusPendingCall& call) {
                 const auto status = call.isError()
                                         ? statusFor(call.error())
                                         : std::optional(statusIn(call.reply(), applicationId_));
                 if (status) status_ = status;
                 // A store that never answered forbids nothing, as on a desktop without one.
                 known(status_.value_or(AuthorizationStatus::authorized));
               });
}

void NotificationPermission::request(std::function<void(bool granted)> answer) {
  askAgain([this, answer = std::move(answer)](AuthorizationStatus status) {
    if (status == AuthorizationStatus::notDetermined) {
      grant(answer);
    } else {
      answer(status == AuthorizationStatus::authorized);
    }
  });
}

void NotificationPermission::grant(std::function<void(bool granted)> answer) {
  constexpr bool kCreateTable = true;
  QDBusMessage message = method("SetPermission");
  message << kTable << kCreateTable << kId << applicationId_ << QStringList{kYes};
  whenFinished(bus_.asyncCall(message, patience_), this,
               [this, answer = std::move(answer)](const QDBusPendingCall& call) {
                 if (!call.isError()) status_ = AuthorizationStatus::authorized;
                 // A grant that was not stored is in force all the same, and asked for again later.
                 answer(true);
               });
}

void NotificationPermission::changed(const QString& table, const QString& id) {
  if (status_ && table == kTable && id == kId) askAgain([](AuthorizationStatus) {});
}

}  // namespace tollbeam
