#include "platform/freedesktop/notifications/RecordingServer.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QThread>
#include <cstdlib>
#include <utility>

namespace tollbeam::test {

void RecordingServer::start() {
  QDBusConnection connection = bus_.connect();
  connection_ = connection.name();
  lastId_ = 0;
  shown.clear();
  held_.clear();
  const bool there = connection.registerObject(
      QStringLiteral("/org/freedesktop/Notifications"), this,
      QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportScriptableSignals |
          QDBusConnection::ExportScriptableProperties | QDBusConnection::ExportAdaptors);
  // The bus may not have noticed yet that the server before this one has gone. No events are
  // handled meanwhile: a test decides when they are.
  const QDeadlineTimer deadline(60000);
  while (!connection.registerService(QStringLiteral("org.freedesktop.Notifications"))) {
    if (!there || deadline.hasExpired()) std::abort();
    QThread::msleep(1);
  }
}

void RecordingServer::stop() {
  if (connection_.isEmpty()) return;
  QDBusConnection::disconnectFromBus(std::exchange(connection_, {}));
}

void RecordingServer::giveUpName() {
  QDBusConnection(connection_).unregisterService(QStringLiteral("org.freedesktop.Notifications"));
}

void RecordingServer::answerHeld() {
  holdsAnswers = false;
  for (const QDBusMessage& answer : std::exchange(held_, {})) {
    QDBusConnection(connection_).send(answer);
  }
}

std::vector<QString> RecordingServer::titles() const {
  std::vector<QString> titles;
  for (const auto& [id, call] : shown) titles.push_back(call.summary);
  return titles;
}

QStringList RecordingServer::GetCapabilities() {
  ++timesAsked;
  if (hidesCapabilities) setDelayedReply(true);
  return capabilities;
}

uint RecordingServer::Notify(const QString& appName, uint replacesId, const QString& appIcon,
                             const QString& summary, const QString& body,
                             const QStringList& actions, const QVariantMap& hints, int timeout) {
  const NotifyCall call{appName, replacesId, appIcon, summary, body, actions, hints, timeout};
  calls.push_back(call);
  if (!fails.isEmpty()) {
    sendErrorReply(fails, QStringLiteral("by the test"));
    return 0;
  }
  const uint id = shown.contains(replacesId) ? replacesId : ++lastId_;
  shown[id] = call;
  if (holdsAnswers) {
    setDelayedReply(true);
    held_.push_back(message().createReply(id));
  }
  return id;
}

QString RecordingServer::GetServerInformation(QString& serversVendor, QString& version,
                                              QString& specification) {
  if (hidesName) setDelayedReply(true);
  serversVendor = vendor;
  version = specification = QStringLiteral("1.2");
  return QStringLiteral("recording");
}

void RecordingServer::CloseNotification(uint id) {
  closeRequests.push_back(id);
  if (shown.contains(id)) close(id, 3);
}

}  // namespace tollbeam::test
