// Bubbles on a desktop's notification server: one at a time for each identifier, replaced by the
// next of that identifier even while the server has not answered yet.
//
// Servers come and go. A bubble's number means something only to the server that gave it: a new
// server starts counting again, so all numbers are forgotten with the old one, or we would replace
// a stranger's bubble. What could not be shown for want of a server waits for one, the newest of
// each identifier; what two servers did not survive is dropped. Nothing but the end waits for the
// bus. Main thread only.
#pragma once

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QObject>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "platform/freedesktop/bus/ServiceOwner.h"
#include "platform/freedesktop/notifications/NotificationCall.h"

class QDBusPendingCallWatcher;

namespace tollbeam {

class NotificationServer : public QObject {
  Q_OBJECT

 public:
  /// `bus` outlives this object.
  NotificationServer(Bus& bus, NotificationLook look);
  /// Takes down what is on show: its buttons would do nothing from now on. Returns when the bus has
  /// the calls, or after a second at most, because what is still queued ends with the process.
  ~NotificationServer() override;

  /// The user chose an action of a bubble of ours.
  std::function<void(const std::string& actionIdentifier)> onAction;

  /// A bubble with a sound is on show, and the server plays none.
  std::function<void(const NotificationSound& sound)> onSilentServer;

  void show(const std::string& identifier, Bubble bubble);

  /// Takes the bubble down, or forgets it if it is not on show yet.
  void withdraw(const std::string& identifier);

 private:
  struct Waiting {
    Bubble bubble;
    /// The server that was to show it left the bus meanwhile. Nobody knows why: it is tried once
    /// more, and a second time it may have been this bubble's doing.
    bool diedWithServer = false;
  };

  /// One identifier's bubble. At most one call is under way; the newest bubble waits behind it.
  struct Slot {
    uint id = 0;
    std::optional<QDBusPendingCall> call;
    bool withdrawn = false;
    std::optional<Waiting> waiting;

    [[nodiscard]] bool isIdle() const { return id == 0 && !call && !waiting; }
  };

  enum class Presence { unknown, asking, absent, present };

  void ask();
  void asked(QDBusPendingCallWatcher* call, int generation);
  void showNext(const std::string& identifier);
  void shown(const std::string& identifier, Waiting waited, QDBusPendingCallWatcher* call,
             int generation);
  void showAllWaiting();
  [[nodiscard]] bool isAnyWaiting() const;
  void close(uint id);
  void ownerChanged();
  [[nodiscard]] bool isServerMissing(const QDBusError& error) const;
  [[nodiscard]] std::map<std::string, Slot>::iterator slotOf(uint id, const QDBusMessage& signal);

  // Their parameters are those of the signals, which the bus matches by signature.
  Q_SLOT void actionInvoked(uint id, const QString& action, const QDBusMessage& signal);
  Q_SLOT void notificationClosed(uint id, uint reason, const QDBusMessage& signal);

  Bus& bus_;
  NotificationLook look_;
  ServiceOwner owner_;
  Presence presence_ = Presence::unknown;
  /// Counts the servers that we have met; an answer of an earlier one says nothing any more.
  int generation_ = 0;
  ServerCapabilities capabilities_;
  std::map<std::string, Slot> slots_;
};

}  // namespace tollbeam
