// A message bus, which may go away and come back at the same address: a QDBusConnection does not
// reconnect by itself. Subscriptions made here hold on every later connection; everything else that
// a bus keeps for a client, such as names and objects, must be set up again on `restored`. Main
// thread only.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

namespace tollbeam {

class Bus final : public QObject {
  Q_OBJECT

 public:
  /// Connects, which blocks the thread until the bus has answered: not at all where there is none,
  /// for as long as it hangs where one accepts and hangs.
  ///
  /// Without a bus it tries again, in the end once a minute. These attempts do not block: they
  /// greet the bus asynchronously over a connection of their own and connect as above once it has
  /// answered. Only a bus that hangs between the two blocks the thread.
  explicit Bus(QDBusConnection::BusType type);
  explicit Bus(const QString& address);
  ~Bus() override;

  [[nodiscard]] bool isConnected() const { return connection_.isConnected(); }

  /// The current connection; another one after `restored`.
  [[nodiscard]] const QDBusConnection& connection() const { return connection_; }

  /// A further connection to the same bus, which is the caller's to close and is not restored.
  /// Blocks until the bus has answered.
  [[nodiscard]] QDBusConnection open(const QString& name) const { return open_(name); }

  /// The library's own timeout, 25 seconds.
  static constexpr int kUsualTimeout = -1;

  /// Fails soon, but not before this returns, while there is no bus. The timeout is in
  /// milliseconds.
  [[nodiscard]] QDBusPendingCall asyncCall(const QDBusMessage& call,
                                           int timeout = kUsualTimeout) const;

  /// A call of a method of the bus itself.
  [[nodiscard]] static QDBusMessage method(const char* name, const QVariantList& arguments = {});

  /// Connects the signal to a SLOT or SIGNAL of the receiver for as long as the receiver lives. It
  /// may come from any sender: with a service in the rule Qt would ask for its owner and block.
  /// `arguments`: the texts with which the signal must begin.
  void listen(const QString& path, const QString& interface, const QString& signal,
              const QStringList& arguments, QObject* receiver, const char* slot);

 Q_SIGNALS:
  /// The connection ended; calls under way have failed.
  void lost();
  /// There is a connection again, or for the first time.
  void restored();

 private Q_SLOTS:
  void onDisconnected();

 private:
  using Opener = std::function<QDBusConnection(const QString& name)>;

  struct Listener {
    QString path;
    QString interface;
    QString signal;
    QStringList arguments;
    QPointer<QObject> receiver;
    const char* slot;
  };

  Bus(QString address, Opener open);
  void connectNow();
  void tryAgain();
  void join();
  void subscribe(const Listener& listener);

  const QString name_;
  const QString greetingName_;
  const QString address_;
  const Opener open_;
  QDBusConnection connection_;
  std::vector<Listener> listeners_;
  QTimer retry_;
  /// The greeting under way, if any.
  std::unique_ptr<QDBusPendingCallWatcher> greeting_;
};

}  // namespace tollbeam
