#include "platform/freedesktop/statusbar/WatcherMonitor.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <functional>

namespace tollbeam {
namespace {

QString watcherName() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }

QString processName(uint pid) {
  QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
  return comm.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(comm.readAll()).trimmed()
                                        : QString();
}

void askBus(QDBusConnection& bus, const QString& method, const QString& argument, QObject* context,
            const std::function<void(const QDBusMessage&)>& answered) {
  auto question = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                 QStringLiteral("/org/freedesktop/DBus"),
                                                 QStringLiteral("org.freedesktop.DBus"), method);
  question << argument;
  auto* call = new QDBusPendingCallWatcher(bus.asyncCall(question), context);
  QObject::connect(call, &QDBusPendingCallWatcher::finished, context, [call, answered] {
    call->deleteLater();
    answered(call->reply());
  });
}

}  // namespace

WatcherMonitor::WatcherMonitor(QDBusConnection bus, QObject* parent)
    : QObject(parent),
      bus_(std::move(bus)),
      watcher_(watcherName(), bus_, QDBusServiceWatcher::WatchForOwnerChange) {
  if (!bus_.isConnected()) {
    presence_ = Presence::Absent;
    return;
  }
  connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString&, const QString&, const QString& owner) { setOwner(owner); });
  // No sender in the rule: for one, QtDBus would wait for the bus to name its owner.
  bus_.connect({}, QStringLiteral("/StatusNotifierWatcher"), watcherName(),
               QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(onHostRegistered()));
  ask();
}

void WatcherMonitor::ask() {
  askBus(bus_, QStringLiteral("GetNameOwner"), watcherName(), this,
         [this](const QDBusMessage& reply) {
           // The signal may have told more since.
           if (presence_ == Presence::NotYetKnown && owner_.isEmpty())
             setOwner(reply.type() == QDBusMessage::ReplyMessage
                          ? reply.arguments().value(0).toString()
                          : QString());
         });
}

void WatcherMonitor::setOwner(const QString& owner) {
  owner_ = owner;
  if (owner.isEmpty())
    settle(Presence::Absent, StatusHost::Other);
  else
    identify(owner);
}

void WatcherMonitor::identify(const QString& owner) {
  askBus(bus_, QStringLiteral("GetConnectionUnixProcessID"), owner, this,
         [this, owner](const QDBusMessage& reply) {
           if (owner != owner_) return;
           const auto process = reply.type() == QDBusMessage::ReplyMessage
                                    ? processName(reply.arguments().value(0).toUInt())
                                    : QString();
           settle(Presence::Present,
                  statusHostFor(process, qEnvironmentVariable("XDG_CURRENT_DESKTOP")));
         });
}

void WatcherMonitor::settle(Presence presence, StatusHost host) {
  presence_ = presence;
  host_ = host;
  Q_EMIT changed();
}

void WatcherMonitor::onHostRegistered() {
  if (presence_ == Presence::Present) Q_EMIT hostRegistered();
}

}  // namespace tollbeam
