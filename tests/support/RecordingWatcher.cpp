#include "support/RecordingWatcher.h"

#include <QDBusPendingCall>
#include <QDBusVariant>

namespace tollbeam::test {
namespace {

QString watcherName() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }
QString itemInterface() { return QStringLiteral("org.kde.StatusNotifierItem"); }

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
  for (const char* name :
       {"NewIcon", "NewTitle", "NewToolTip", "NewStatus", "XAyatanaNewLabel", "LayoutUpdated"})
    bus_.connect(item_, {}, {}, QLatin1String(name), this, SLOT(onSignal(QDBusMessage)));
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
  const auto reply =
      call(QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.freedesktop.DBus.Properties"),
           QStringLiteral("Get"), {itemInterface(), QLatin1String(name)});
  if (!reply || reply->size() != 1) return std::nullopt;
  return reply->front().value<QDBusVariant>().variant();
}

std::optional<QVariantList> RecordingHost::menu(const char* method, const QVariantList& arguments) {
  return call(QStringLiteral("/StatusNotifierItem/Menu"), QStringLiteral("com.canonical.dbusmenu"),
              QLatin1String(method), arguments);
}

}  // namespace tollbeam::test
