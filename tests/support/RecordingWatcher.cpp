#include "support/RecordingWatcher.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>

namespace tollbeam::test {
namespace {

QString watcherName() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }
QString itemInterface() { return QStringLiteral("org.kde.StatusNotifierItem"); }
QString menuInterface() { return QStringLiteral("com.canonical.dbusmenu"); }
QString itemPath() { return QStringLiteral("/StatusNotifierItem"); }

}  // namespace

RecordingWatcher::RecordingWatcher(QDBusConnection bus) : bus_(std::move(bus)) {
  bus_.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                      QDBusConnection::ExportScriptableContents);
  bus_.registerService(watcherName());
}

RecordingWatcher::~RecordingWatcher() {
  bus_.unregisterService(watcherName());
  bus_.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
}

RecordingHost::RecordingHost(QDBusConnection bus, QString item)
    : bus_(std::move(bus)), item_(std::move(item)) {
  const auto listen = [this](const QString& interface, const char* name, const char* slot) {
    bus_.connect(item_, {}, interface, QLatin1String(name), this, slot);
  };
  listen(itemInterface(), "NewIcon", SLOT(onNewIcon()));
  listen(itemInterface(), "NewTitle", SLOT(onNewTitle()));
  listen(itemInterface(), "NewToolTip", SLOT(onNewToolTip()));
  listen(itemInterface(), "NewStatus", SLOT(onNewStatus()));
  listen(itemInterface(), "XAyatanaNewLabel", SLOT(onNewLabel()));
  listen(menuInterface(), "LayoutUpdated", SLOT(onLayoutUpdated()));
}

std::optional<QVariantList> RecordingHost::call(const QString& path, const QString& interface,
                                                const QString& method,
                                                const QVariantList& arguments) {
  auto message = QDBusMessage::createMethodCall(item_, path, interface, method);
  message.setArguments(arguments);
  const auto pending = bus_.asyncCall(message);
  if (!waitFor([&] { return pending.isFinished(); }) || pending.isError()) return std::nullopt;
  return pending.reply().arguments();
}

std::optional<QVariant> RecordingHost::property(const char* name) {
  const auto reply = call(itemPath(), QStringLiteral("org.freedesktop.DBus.Properties"),
                          QStringLiteral("Get"), {itemInterface(), QLatin1String(name)});
  if (!reply || reply->size() != 1) return std::nullopt;
  return reply->front().value<QDBusVariant>().variant();
}

std::optional<QVariantList> RecordingHost::menu(const char* method, const QVariantList& arguments) {
  return call(itemPath() + QStringLiteral("/Menu"), menuInterface(), QLatin1String(method),
              arguments);
}

}  // namespace tollbeam::test
