#include "platform/freedesktop/session/LogindWorkspace.h"

#include <QDBusPendingReply>
#include <QPointer>
#include <utility>

#include "platform/freedesktop/bus/WhenFinished.h"

namespace tollbeam {

namespace {

const auto kService = QStringLiteral("org.freedesktop.login1");
const auto kPath = QStringLiteral("/org/freedesktop/login1");
const auto kInterface = QStringLiteral("org.freedesktop.login1.Manager");

}  // namespace

// logind is not started for this: where it does not run, nothing announces sleep.
LogindWorkspace::LogindWorkspace(Bus& systemBus)
    : bus_(systemBus), owner_(bus_, kService, Activation::forbidden) {
  bus_.listen(kPath, kInterface, QStringLiteral("PrepareForSleep"), {}, this,
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
  auto call =
      QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Inhibit"));
  call << QStringLiteral("sleep") << QStringLiteral("Tollbeam")
       << QStringLiteral("The battery history is saved first") << QStringLiteral("delay");
  call.setAutoStartService(false);
  using Lock = QDBusPendingReply<QDBusUnixFileDescriptor>;
  whenFinished(bus_.asyncCall(call), this, [this, request = ++request_](const Lock& lock) {
    // A lock that comes during the preparation for sleep is released by dropping the answer.
    if (request == request_ && lock.isValid() && !preparing_) lock_ = lock.value();
  });
}

void LogindWorkspace::onPrepareForSleep(bool start, const QDBusMessage& message) {
  // Any process may send such a signal.
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
  // The logind that announced the sleep is gone and cannot announce the wake.
  if (std::exchange(preparing_, false)) didWake_.notify();
  if (alive && !owner_.name().isEmpty()) takeLock();
}

}  // namespace tollbeam
