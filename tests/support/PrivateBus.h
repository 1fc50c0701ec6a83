// A test's own message bus: a real dbus-daemon that ends with the object. It can activate only the
// service that the test names.
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>
#include <vector>

#include "platform/freedesktop/bus/Bus.h"
#include "support/WaitFor.h"

namespace tollbeam::test {

/// A service that the bus starts when it is called.
struct Activatable {
  QString name;
  QString command;
  /// How long the bus waits for the name to be taken.
  int milliseconds = 25000;
};

class PrivateBus {
 public:
  PrivateBus() : PrivateBus(Activatable()) {}
  explicit PrivateBus(const Activatable& service);
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;
  ~PrivateBus();

  [[nodiscard]] const QString& address() const { return address_; }

  /// A new connection at every call, closed with the bus.
  [[nodiscard]] QDBusConnection connect();

  /// A new connection as the program's classes take it. It is restored after `stop` and `start`.
  [[nodiscard]] Bus& join();

  /// Ends the daemon, and starts another one at the same address.
  void stop();
  void start();

 private:
  // Holds the socket, which a killed daemon would leave behind.
  QTemporaryDir folder_;
  QProcess daemon_;
  QString address_;
  QStringList names_;
  std::vector<std::unique_ptr<Bus>> joined_;
};

/// To be called before the process starts: it then ends when this one does, so that a test that
/// crashes leaves nothing behind.
void endWithThisProcess(QProcess& process);

}  // namespace tollbeam::test
