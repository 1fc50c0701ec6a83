// A notification server in the place of the desktop's. The desk tests use real ones; here a test
// must see every hint of a call, and make the server restart, fail, answer late or die in the
// middle of a call, which no real one does on demand.
#pragma once

#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <map>
#include <vector>

#include "support/PrivateBus.h"

namespace tollbeam::test {

struct NotifyCall {
  QString appName;
  uint replacesId = 0;
  QString appIcon;
  QString summary;
  QString body;
  QStringList actions;
  QVariantMap hints;
  int timeout = 0;
};

class RecordingServer : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
  Q_PROPERTY(bool Inhibited MEMBER inhibited SCRIPTABLE true)

 public:
  explicit RecordingServer(PrivateBus& bus) : bus_(bus) {}
  ~RecordingServer() override { stop(); }

  /// Joins the bus with nothing on show and ids that begin at 1.
  void start();
  /// Leaves the bus without a message, as a program that crashes.
  void stop();
  /// Releases the name for another server, and stays on the bus.
  void giveUpName();

  /// Answers the calls that `holdsAnswers` has delayed, and later ones at once.
  void answerHeld();

  /// What the user does.
  void choose(uint id, const char* action) {
    Q_EMIT ActionInvoked(id, QString::fromLatin1(action));
    close(id, 2);
  }
  void close(uint id, uint reason) {
    shown.erase(id);
    Q_EMIT NotificationClosed(id, reason);
  }

  /// The titles on show, by id.
  [[nodiscard]] std::vector<QString> titles() const;

  QStringList capabilities{QStringLiteral("actions"), QStringLiteral("body"),
                           QStringLiteral("body-markup"), QStringLiteral("sound")};
  /// Whether the user has switched on "do not disturb".
  bool inhibited = false;
  QString vendor = QStringLiteral("none");
  /// Never answers GetServerInformation.
  bool hidesName = false;
  bool holdsAnswers = false;
  /// Never answers GetCapabilities.
  bool hidesCapabilities = false;
  /// An error name; empty to succeed.
  QString fails;

  int timesAsked = 0;
  std::vector<NotifyCall> calls;
  std::map<uint, NotifyCall> shown;
  std::vector<uint> closeRequests;

 public Q_SLOTS:
  // The names are those of the interface.
  Q_SCRIPTABLE QStringList GetCapabilities();
  Q_SCRIPTABLE uint Notify(const QString& appName, uint replacesId, const QString& appIcon,
                           const QString& summary, const QString& body, const QStringList& actions,
                           const QVariantMap& hints, int timeout);
  Q_SCRIPTABLE void CloseNotification(uint id);
  Q_SCRIPTABLE QString GetServerInformation(QString& serversVendor, QString& version,
                                            QString& specification);

 Q_SIGNALS:
  Q_SCRIPTABLE void ActionInvoked(uint id, const QString& action);
  Q_SCRIPTABLE void NotificationClosed(uint id, uint reason);

 private:
  PrivateBus& bus_;
  QString connection_;
  uint lastId_ = 0;
  std::vector<QDBusMessage> held_;
};

}  // namespace tollbeam::test
