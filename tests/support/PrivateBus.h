// A message bus of a test's own: a real dbus-daemon that ends with the object. Nothing can be
// activated on it, unless a test says what, so a service is there only when the test starts one.
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

  /// A connection of its own at every call; it is closed with the bus.
  [[nodiscard]] QDBusConnection connect();

  /// The same as the program's classes take it. It comes back after `stop` and `start`, which no
  /// other connection does.
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

/// Lets the process, which is to be started yet, end when this one does: a test that crashes leaves
/// nothing behind.
void endWithThisProcess(QProcess& process);

}  // namespace tollbeam::test
