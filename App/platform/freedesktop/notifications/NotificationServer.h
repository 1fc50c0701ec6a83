// Bubbles on a desktop's notification server: one at a time for each identifier, replaced by the
// next of that identifier even while the server has not answered yet.
//
// Servers come and go. A bubble's number means something only to the server that gave it: a new
// server starts counting again, so all numbers are forgotten with the old one, or we would replace
// another program's bubble. Without a server the newest bubble of each identifier waits for one;
// one with which two servers died is dropped. Only the end blocks. Main thread only.
#pragma once

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QObject>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "platform/freedesktop/bus/ServiceOwner.h"
#include "platform/freedesktop/notifications/NotificationCall.h"

namespace tollbeam {

class NotificationServer : public QObject {
  Q_OBJECT

 public:
  /// `bus` outlives this object.
  NotificationServer(Bus& bus, NotificationLook look);
  /// Takes down the bubbles on show: their buttons would do nothing from now on. Blocks until the
  /// bus has the calls, a second at most: calls that are still queued are lost with the process.
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
    /// The server left the bus while it showed this bubble, perhaps because of it: the bubble is
    /// tried once more and then dropped.
    bool diedWithServer = false;
  };

  /// The bubble of one identifier. At most one call is under way; the newest bubble waits for it.
  struct Slot {
    /// The server's number of the bubble on show; 0 when there is none.
    uint id = 0;
    std::optional<QDBusPendingCall> call;
    bool isWithdrawn = false;
    std::optional<Waiting> waiting;

    [[nodiscard]] bool isIdle() const { return id == 0 && !call && !waiting; }
  };

  enum class Presence { unknown, asking, absent, present };

  void requestCapabilities();
  void takeCapabilities(const QDBusPendingReply<QStringList>& reply);
  void showNext(const std::string& identifier, Slot& slot);
  void answered(const std::string& identifier, Waiting waited, const QDBusPendingReply<uint>& reply,
                int generation);
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
  /// Incremented for each server; replies from earlier ones are stale.
  int generation_ = 0;
  ServerCapabilities capabilities_;
  std::map<std::string, Slot> slots_;
};

}  // namespace tollbeam
