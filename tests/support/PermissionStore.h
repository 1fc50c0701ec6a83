// The desktop's own permission store, started empty on a private bus.
#pragma once

#include <signal.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include "support/PrivateBus.h"

namespace tollbeam::test {

class PermissionStore {
 public:
  explicit PermissionStore(PrivateBus& bus) : bus_(bus), connection_(bus.connect()) {}
  PermissionStore(const PermissionStore&) = delete;
  PermissionStore& operator=(const PermissionStore&) = delete;
  ~PermissionStore() { stop(); }

  [[nodiscard]] static bool isInstalled() { return QFileInfo::exists(program()); }

  /// False when it could not be started.
  [[nodiscard]] bool start() {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus_.address());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), memory_.path());
    process_.setProcessEnvironment(environment);
    process_.setStandardErrorFile(QProcess::nullDevice());
    endWithThisProcess(process_);
    process_.start(program(), QStringList());
    return process_.waitForStarted(kPatience) &&
           waitFor([this] { return connection_.interface()->isServiceRegistered(name()); });
  }

  void stop() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished(kPatience);
    waitFor([this] { return !connection_.interface()->isServiceRegistered(name()); });
  }

  /// Delays every answer until `resume`.
  void hang() { ::kill(static_cast<pid_t>(process_.processId()), SIGSTOP); }
  void resume() { ::kill(static_cast<pid_t>(process_.processId()), SIGCONT); }

  /// What a settings program does.
  void set(const char* application, const QStringList& permissions) {
    QDBusMessage call = method("SetPermission");
    call << table() << true << id() << QString::fromLatin1(application) << permissions;
    connection_.call(call);
  }
  void clear() {
    QDBusMessage call = method("Delete");
    call << table() << id();
    connection_.call(call);
  }

  /// Empty when there is no entry.
  [[nodiscard]] QStringList permissions(const char* application) {
    QDBusMessage call = method("GetPermission");
    call << table() << id() << QString::fromLatin1(application);
    return connection_.call(call).arguments().value(0).toStringList();
  }

 private:
  static QString program() { return QStringLiteral("/usr/libexec/xdg-permission-store"); }
  static QString name() { return QStringLiteral("org.freedesktop.impl.portal.PermissionStore"); }
  static QString table() { return QStringLiteral("notifications"); }
  static QString id() { return QStringLiteral("notification"); }
  static QDBusMessage method(const char* method) {
    return QDBusMessage::createMethodCall(
        name(), QStringLiteral("/org/freedesktop/impl/portal/PermissionStore"), name(),
        QLatin1String(method));
  }

  PrivateBus& bus_;
  QDBusConnection connection_;
  QTemporaryDir memory_;
  QProcess process_;
};

}  // namespace tollbeam::test
