#include "support/PrivateBus.h"

#include <signal.h>
#include <sys/prctl.h>

#include <QDir>
#include <QFile>
#include <cstdlib>

namespace tollbeam::test {

namespace {

// The usual session bus without its service folders, so that no installed service answers in a
// test.
constexpr const char* kConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path=%1/socket</listen>
  <servicedir>%1/services</servicedir>
  <limit name="service_start_timeout">%2</limit>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

void writeFile(const QString& name, const QString& text) {
  QFile file(name);
  if (!file.open(QFile::WriteOnly) || file.write(text.toUtf8()) < 0) std::abort();
}

}  // namespace

// Not in $TMPDIR: a socket's path has room for 107 bytes only.
PrivateBus::PrivateBus(const Activatable& service)
    : folder_(QStringLiteral("/tmp/private-bus-XXXXXX")) {
  const QString configuration = folder_.filePath(QStringLiteral("configuration"));
  writeFile(configuration,
            QString::fromUtf8(kConfiguration).arg(folder_.path()).arg(service.milliseconds));
  QDir(folder_.path()).mkdir(QStringLiteral("services"));
  if (!service.name.isEmpty()) {
    writeFile(
        folder_.filePath(QStringLiteral("services/one.service")),
        QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(service.name, service.command));
  }
  daemon_.setStandardErrorFile(QProcess::nullDevice());
  endWithThisProcess(daemon_);
  daemon_.setProgram(QStringLiteral("dbus-daemon"));
  daemon_.setArguments({QStringLiteral("--config-file=") + configuration,
                        QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                        QStringLiteral("--print-address=1")});
  start();
}

PrivateBus::~PrivateBus() {
  joined_.clear();
  for (const auto& name : names_) QDBusConnection::disconnectFromBus(name);
  stop();
}

void PrivateBus::start() {
  daemon_.start();
  if (!daemon_.waitForStarted(kPatience) || !daemon_.waitForReadyRead(kPatience)) std::abort();
  // Without the daemon's identifier: a client that knows it accepts no other daemon.
  address_ = QString::fromUtf8(daemon_.readLine()).trimmed().section(QLatin1Char(','), 0, 0);
}

void PrivateBus::stop() {
  daemon_.kill();
  daemon_.waitForFinished(kPatience);
}

QDBusConnection PrivateBus::connect() {
  static int count = 0;
  names_ << QStringLiteral("private-%1").arg(++count);
  return QDBusConnection::connectToBus(address_, names_.last());
}

Bus& PrivateBus::join() { return *joined_.emplace_back(std::make_unique<Bus>(address_)); }

void endWithThisProcess(QProcess& process) {
  process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

}  // namespace tollbeam::test
