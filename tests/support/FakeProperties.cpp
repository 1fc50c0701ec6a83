#include "support/FakeProperties.h"

#include <QDBusPendingCallWatcher>
#include <utility>

#include "support/PrivateBus.h"

namespace tollbeam::test {

FakeProperties::FakeProperties(const QDBusConnection& bus, QString path, QString interface)
    : bus_(bus), path_(std::move(path)), interface_(std::move(interface)) {
  bus_.registerVirtualObject(path_, this);
}

FakeProperties::~FakeProperties() { bus_.unregisterObject(path_); }

void FakeProperties::answer() {
  for (const auto& question : std::exchange(unanswered_, {})) {
    bus_.send(question.createReply(QVariant(properties)));
  }
}

void FakeProperties::change(const QVariantMap& values) {
  properties.insert(values);
  announce(values, {});
}

void FakeProperties::invalidate(const QString& property) { announce({}, {property}); }

void FakeProperties::announce(const QVariantMap& changed, const QStringList& invalidated) {
  auto signal = QDBusMessage::createSignal(path_, QStringLiteral("org.freedesktop.DBus.Properties"),
                                           QStringLiteral("PropertiesChanged"));
  signal << interface_ << changed << invalidated;
  bus_.send(signal);
}

QString FakeProperties::introspect(const QString& /*path*/) const { return {}; }

bool FakeProperties::handleMessage(const QDBusMessage& message,
                                   const QDBusConnection& /*connection*/) {
  if (message.member() != QStringLiteral("GetAll")) return false;
  ++asked;
  unanswered_ << message;
  if (!silent) answer();
  return true;
}

bool passedOn(const QDBusConnection& connection) {
  bool answered = false;
  const QDBusPendingCallWatcher call(connection.asyncCall(Bus::method("GetId")));
  QObject::connect(&call, &QDBusPendingCallWatcher::finished, [&answered] { answered = true; });
  return waitFor([&answered] { return answered; });
}

}  // namespace tollbeam::test
