#include "support/FakePortal.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <cstdlib>
#include <utility>

namespace tollbeam::test {
namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");

}  // namespace

FakePortal::FakePortal(const QDBusConnection& bus, Settings initial)
    : settings(std::move(initial)), bus_(bus) {
  qDBusRegisterMetaType<Settings>();
  bus_.registerVirtualObject(kPath, this);
  if (!bus_.registerService(kService)) std::abort();
}

FakePortal::~FakePortal() {
  bus_.unregisterService(kService);
  bus_.unregisterObject(kPath);
}

void FakePortal::answer() {
  for (const auto& [question, known] : std::exchange(open_, {})) {
    bus_.send(refusing ? question.createErrorReply(QDBusError::UnknownMethod, QString())
                       : question.createReply(QVariant::fromValue(known)));
  }
}

void FakePortal::change(const QString& group, const QString& key, const QVariant& value) {
  settings[group].insert(key, value);
  sendSettingChanged(bus_, group, key, value);
}

QString FakePortal::introspect(const QString& /*path*/) const { return {}; }

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) {
  if (message.interface() != kInterface || message.member() != QStringLiteral("ReadAll"))
    return false;
  ++asked;
  askedFor = message.arguments().value(0).toStringList();
  Settings known;
  for (auto group = settings.cbegin(); group != settings.cend(); ++group) {
    if (askedFor.contains(group.key())) known.insert(group.key(), group.value());
  }
  open_.append({message, known});
  if (!silent) answer();
  return true;
}

void sendSettingChanged(const QDBusConnection& bus, const QString& group, const QString& key,
                        const QVariant& value) {
  auto signal = QDBusMessage::createSignal(kPath, kInterface, QStringLiteral("SettingChanged"));
  signal << group << key << QVariant::fromValue(QDBusVariant(value));
  bus.send(signal);
}

QVariant threeNumbers(double a, double b, double c) {
  QDBusArgument structure;
  structure.beginStructure();
  structure << a << b << c;
  structure.endStructure();
  return QVariant::fromValue(structure);
}

}  // namespace tollbeam::test
