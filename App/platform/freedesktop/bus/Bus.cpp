#include "platform/freedesktop/bus/Bus.h"

#include <QDBusError>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <utility>

namespace tollbeam {

namespace {

using namespace std::chrono_literals;

// A restarted bus is back soon; a missing one costs one wake-up a minute.
constexpr auto kFirstPause = 1s;
constexpr auto kLongestPause = 60s;

/// Where libdbus looks for the bus; empty where it would have to start one.
QString addressOf(QDBusConnection::BusType type) {
  const bool isSystem = type == QDBusConnection::SystemBus;
  QString given =
      qEnvironmentVariable(isSystem ? "DBUS_SYSTEM_BUS_ADDRESS" : "DBUS_SESSION_BUS_ADDRESS");
  if (!given.isEmpty()) return given;
  if (isSystem) return QStringLiteral("unix:path=/var/run/dbus/system_bus_socket");
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (folder.isEmpty()) return {};
  return QStringLiteral("unix:path=") +
         QString::fromLatin1(QUrl::toPercentEncoding(folder + QStringLiteral("/bus"), "/", "~"));
}

}  // namespace

Bus::Bus(QDBusConnection::BusType type)
    : Bus(addressOf(type),
          [type](const QString& name) { return QDBusConnection::connectToBus(type, name); }) {}

Bus::Bus(const QString& address)
    : Bus(address,
          [address](const QString& name) { return QDBusConnection::connectToBus(address, name); }) {
}

Bus::Bus(QString address, Opener open)
    : name_(QStringLiteral("tollbeam-bus-%1").arg(quintptr(this), 0, 16)),
      greetingName_(name_ + QStringLiteral("-greeting")),
      address_(std::move(address)),
      open_(std::move(open)),
      connection_(name_) {
  retry_.setSingleShot(true);
  QObject::connect(&retry_, &QTimer::timeout, this, &Bus::tryAgain);
  connectNow();
  if (!isConnected()) retry_.start(kFirstPause);
}

Bus::~Bus() {
  QDBusConnection::disconnectFromPeer(greetingName_);
  QDBusConnection::disconnectFromBus(name_);
}

QDBusPendingCall Bus::asyncCall(const QDBusMessage& call, int timeout) const {
  // Qt never finishes a call on a closed connection.
  if (!isConnected()) return QDBusPendingCall::fromError({QDBusError::Disconnected, QString()});
  return connection_.asyncCall(call, timeout);
}

QDBusMessage Bus::method(const char* name, const QVariantList& arguments) {
  const QString bus = QStringLiteral("org.freedesktop.DBus");
  auto call = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                             QLatin1String(name));
  call.setArguments(arguments);
  return call;
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
  // Qt itself emits this when the connection ends.
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
  // The next attempt replaces this one.
  retry_.start(std::min<std::chrono::milliseconds>(retry_.intervalAsDuration() * 2, kLongestPause));
  greeting_.reset();
  QDBusConnection::disconnectFromPeer(greetingName_);
  // As a peer, because Qt connects to a peer without waiting for an answer.
  const auto peer = QDBusConnection::connectToPeer(address_, greetingName_);
  // No bus there that could hang. libdbus may know of one elsewhere.
  if (!peer.isConnected()) return join();
  greeting_ = std::make_unique<QDBusPendingCallWatcher>(peer.asyncCall(method("Hello")));
  QObject::connect(greeting_.get(), &QDBusPendingCallWatcher::finished, this, [this] {
    const bool answers = !greeting_->isError();
    greeting_.release()->deleteLater();
    QDBusConnection::disconnectFromPeer(greetingName_);
    if (answers) join();
  });
}

void Bus::join() {
  connectNow();
  if (!isConnected()) return;
  retry_.stop();
  Q_EMIT restored();
}

}  // namespace tollbeam
