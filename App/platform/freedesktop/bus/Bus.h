// A message bus, which may go away and come back at the same address: a connection does not
// reconnect by itself. Subscriptions made here hold on every later connection; what else a class
// told the bus it tells again when `restored`. Main thread only.
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
  /// Connects here, which blocks the thread until the bus has answered: at once where there is
  /// none, for as long as it hangs where one accepts and hangs.
  ///
  /// Without a bus it goes on trying, a minute apart in the end. These attempts do not block: a bus
  /// is greeted asynchronously over a connection of its own, and joined as above once it has
  /// answered. Only one that hangs between the two holds the thread up.
  explicit Bus(QDBusConnection::BusType type);
  explicit Bus(const QString& address);
  ~Bus() override;

  [[nodiscard]] bool isConnected() const { return connection_.isConnected(); }

  /// The present connection; another one after `restored`.
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

  /// Connects the signal to a SLOT or SIGNAL of the receiver for as long as that lives. It may come
  /// from anyone: a rule that named a service would make the library ask for its owner and wait.
  /// `arguments`: the texts with which the signal must begin.
  void listen(const QString& path, const QString& interface, const QString& signal,
              const QStringList& arguments, QObject* receiver, const char* slot);

 Q_SIGNALS:
  /// The connection ended; calls under way have failed.
  void lost();
  /// There is a connection again, or at last.
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
