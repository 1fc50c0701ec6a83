#include "platform/freedesktop/bus/Bus.h"

#include <QDBusError>
#include <algorithm>
#include <chrono>
#include <utility>

namespace tollbeam {

namespace {

using namespace std::chrono_literals;

// A bus that is restarted is back soon; one that is not costs a wake-up a minute.
constexpr auto kFirstPause = 1s;
constexpr auto kLongestPause = 60s;

}  // namespace

Bus::Bus(QDBusConnection::BusType type)
    : Bus([type](const QString& name) { return QDBusConnection::connectToBus(type, name); }) {}

Bus::Bus(const QString& address)
    : Bus([address](const QString& name) { return QDBusConnection::connectToBus(address, name); }) {
}

Bus::Bus(Opener open)
    : name_(QStringLiteral("tollbeam-bus-%1").arg(quintptr(this), 0, 16)),
      open_(std::move(open)),
      connection_(name_) {
  retry_.setSingleShot(true);
  QObject::connect(&retry_, &QTimer::timeout, this, &Bus::tryAgain);
  connectNow();
  if (!isConnected()) retry_.start(kFirstPause);
}

Bus::~Bus() { QDBusConnection::disconnectFromBus(name_); }

QDBusPendingCall Bus::asyncCall(const QDBusMessage& call, int timeout) const {
  // The library would never finish a call on a connection that is closed.
  if (!isConnected()) return QDBusPendingCall::fromError({QDBusError::Disconnected, QString()});
  return connection_.asyncCall(call, timeout);
}

void Bus::listen(const QString& path, const QString& interface, const QString& signal,
                 const QStringList& arguments, QObject* receiver, const char* slot) {
  std::erase_if(listeners_, [](const Listener& listener) { return !listener.receiver; });
  listeners_.push_back({path, interface, signal, arguments, receiver, slot});
  subscribe(listeners_.back());
}

void Bus::subscribe(const Listener& listener) {
  if (!listener.receiver) return;
  connection_.connect(QString(), listener.path, listener.interface, listener.signal,
                      listener.arguments, QString(), listener.receiver, listener.slot);
}

void Bus::connectNow() {
  QDBusConnection::disconnectFromBus(name_);
  connection_ = open_(name_);
  if (!isConnected()) return;
  // Not a message of the bus: the library makes it when the connection ends.
  connection_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                      QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                      this, SLOT(onDisconnected()));
  for (const auto& listener : listeners_) subscribe(listener);
}

void Bus::onDisconnected() {
  retry_.start(kFirstPause);
  Q_EMIT lost();
}

void Bus::tryAgain() {
  connectNow();
  if (isConnected()) {
    Q_EMIT restored();
  } else {
    retry_.start(
        std::min<std::chrono::milliseconds>(retry_.intervalAsDuration() * 2, kLongestPause));
  }
}

}  // namespace tollbeam
