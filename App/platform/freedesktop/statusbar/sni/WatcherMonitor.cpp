#include "platform/freedesktop/statusbar/sni/WatcherMonitor.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QFile>

#include "platform/freedesktop/bus/WhenFinished.h"

namespace tollbeam {
namespace {

QString watcherName() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }

QString processName(uint pid) {
  QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
  return comm.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(comm.readAll()).trimmed()
                                        : QString();
}

}  // namespace

WatcherMonitor::WatcherMonitor(Bus& bus)
    : bus_(bus), owner_(bus_, watcherName(), Activation::forbidden) {
  bus_.listen(QStringLiteral("/StatusNotifierWatcher"), watcherName(),
              QStringLiteral("StatusNotifierHostRegistered"), {}, this, SLOT(onHostRegistered()));
  connect(&owner_, &ServiceOwner::changed, this, [this] {
    if (owner_.name().isEmpty())
      settle(Presence::Absent, StatusHost::Other);
    else
      identify();
  });
}

void WatcherMonitor::identify() {
  auto question = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
  question << owner_.name();
  whenFinished(bus_.asyncCall(question), this,
               [this, owner = owner_.name()](const QDBusPendingReply<uint>& reply) {
                 if (owner != owner_.name()) return;
                 const auto process = reply.isValid() ? processName(reply.value()) : QString();
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
