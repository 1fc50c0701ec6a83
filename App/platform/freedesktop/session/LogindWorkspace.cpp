#include "platform/freedesktop/session/LogindWorkspace.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>
#include <utility>

namespace tollbeam {

namespace {

const auto service = QStringLiteral("org.freedesktop.login1");
const auto path = QStringLiteral("/org/freedesktop/login1");
const auto interface = QStringLiteral("org.freedesktop.login1.Manager");

}  // namespace

// Without logind nobody announces sleep: there is nothing to start it for.
LogindWorkspace::LogindWorkspace(Bus& systemBus)
    : bus_(systemBus), owner_(bus_, service, Activation::forbidden) {
  bus_.listen(path, interface, QStringLiteral("PrepareForSleep"), {}, this,
              SLOT(onPrepareForSleep(bool, QDBusMessage)));
  connect(&owner_, &ServiceOwner::changed, this, &LogindWorkspace::onOwnerChanged);
}

Subscription LogindWorkspace::onWillSleep(std::function<void()> callback) {
  return willSleep_.add(std::move(callback));
}

Subscription LogindWorkspace::onDidWake(std::function<void()> callback) {
  return didWake_.add(std::move(callback));
}

void LogindWorkspace::takeLock() {
  auto call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Inhibit"));
  call << QStringLiteral("sleep") << QStringLiteral("Tollbeam")
       << QStringLiteral("The battery history is saved first") << QStringLiteral("delay");
  call.setAutoStartService(false);
  const int request = ++request_;
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, request](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *finished;
            if (request != request_) return;
            // A lock that comes while the machine prepares to sleep would hold it up: dropping the
            // answer closes it.
            if (reply.isValid() && !preparing_) lock_ = reply.value();
          });
}

void LogindWorkspace::onPrepareForSleep(bool start, const QDBusMessage& message) {
  // Anybody may send such a signal, and no lock is held for one that comes from nobody.
  if (!owner_.sent(message)) return;
  const QPointer<LogindWorkspace> alive(this);
  preparing_ = start;
  if (start) {
    willSleep_.notify();
    if (alive) lock_ = QDBusUnixFileDescriptor();
  } else {
    didWake_.notify();
    if (alive) takeLock();
  }
}

void LogindWorkspace::onOwnerChanged() {
  const QPointer<LogindWorkspace> alive(this);
  // The one that announced sleep is gone; nobody will announce the wake.
  if (std::exchange(preparing_, false)) didWake_.notify();
  if (alive && !owner_.name().isEmpty()) takeLock();
}

}  // namespace tollbeam
