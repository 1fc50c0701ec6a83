#include "platform/freedesktop/notifications/NotificationServer.h"

#include <QDBusPendingReply>
#include <algorithm>
#include <limits>
#include <utility>

#include "platform/freedesktop/bus/WhenFinished.h"

namespace tollbeam {

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");

// In milliseconds, as those below. A server that does not list its capabilities in this time is
// taken for one with the usual ones.
constexpr int kCapabilitiesTimeout = 5000;

// A server that hangs has the call already and shows the bubble when it goes on: we must learn its
// number even then. So a call ends without an answer only when the server leaves the bus.
constexpr int kNever = std::numeric_limits<int>::max();

// For each of the two calls that the end waits for.
constexpr int kLastCallTimeout = 500;

QDBusMessage method(const char* name) {
  return QDBusMessage::createMethodCall(kService, kPath, kService, QLatin1String(name));
}

}  // namespace

NotificationServer::NotificationServer(Bus& bus, NotificationLook look)
    : bus_(bus), look_(std::move(look)), owner_(bus_, kService, Activation::forbidden) {
  connect(&owner_, &ServiceOwner::changed, this, &NotificationServer::ownerChanged);
  // The bus starts some servers only when they are called.
  connect(&bus_, &Bus::restored, this, [this] {
    if (isAnyWaiting()) requestCapabilities();
  });
  bus_.listen(kPath, kService, QStringLiteral("ActionInvoked"), {}, this,
              SLOT(actionInvoked(uint, QString, QDBusMessage)));
  bus_.listen(kPath, kService, QStringLiteral("NotificationClosed"), {}, this,
              SLOT(notificationClosed(uint, uint, QDBusMessage)));
}

NotificationServer::~NotificationServer() {
  if (slots_.empty() || !bus_.isConnected()) return;
  // Servers answer in order: after this answer every bubble's number is known.
  if (std::any_of(slots_.begin(), slots_.end(),
                  [](const auto& entry) { return entry.second.call.has_value(); })) {
    auto question = method("GetCapabilities");
    question.setAutoStartService(false);
    bus_.connection().call(question, QDBus::Block, kLastCallTimeout);
  }
  for (const auto& [identifier, slot] : slots_) {
    const bool isAnswered = slot.call && slot.call->isFinished() && slot.call->isValid();
    const uint id = isAnswered ? QDBusPendingReply<uint>(*slot.call).value() : slot.id;
    if (id != 0) close(id);
  }
  // The bus reads in order: after this answer it has the calls above.
  const auto busService = QStringLiteral("org.freedesktop.DBus");
  bus_.connection().call(
      QDBusMessage::createMethodCall(busService, QStringLiteral("/org/freedesktop/DBus"),
                                     busService, QStringLiteral("GetId")),
      QDBus::Block, kLastCallTimeout);
}

void NotificationServer::show(const std::string& identifier, Bubble bubble) {
  Slot& slot = slots_[identifier];
  slot.waiting = Waiting{std::move(bubble)};
  slot.isWithdrawn = false;
  // Also with no server: the call starts one where the desktop can.
  if (presence_ == Presence::unknown || presence_ == Presence::absent) requestCapabilities();
  showNext(identifier, slot);
}

void NotificationServer::withdraw(const std::string& identifier) {
  const auto found = slots_.find(identifier);
  if (found == slots_.end()) return;
  Slot& slot = found->second;
  slot.waiting.reset();
  if (slot.call) {
    slot.isWithdrawn = true;
  } else {
    if (slot.id != 0) close(slot.id);
    slots_.erase(found);
  }
}

void NotificationServer::requestCapabilities() {
  presence_ = Presence::asking;
  whenFinished(bus_.asyncCall(method("GetCapabilities"), kCapabilitiesTimeout), this,
               [this, generation = generation_](const QDBusPendingReply<QStringList>& reply) {
                 if (generation == generation_) takeCapabilities(reply);
               });
}

void NotificationServer::takeCapabilities(const QDBusPendingReply<QStringList>& reply) {
  if (reply.isError() && isServerMissing(reply.error())) {
    presence_ = Presence::absent;
    return;
  }
  presence_ = Presence::present;
  capabilities_ = reply.isError() ? ServerCapabilities{.actions = true}
                                  : ServerCapabilities::from(reply.value());
  for (auto& [identifier, slot] : slots_) showNext(identifier, slot);
}

void NotificationServer::showNext(const std::string& identifier, Slot& slot) {
  if (presence_ != Presence::present || slot.call || !slot.waiting) return;
  const Waiting next = *std::exchange(slot.waiting, std::nullopt);
  QDBusMessage message = method("Notify");
  message.setArguments(notifyArguments(next.bubble, look_, capabilities_, slot.id));
  slot.call = bus_.asyncCall(message, kNever);
  whenFinished(
      *slot.call, this,
      [this, identifier, next, generation = generation_](const QDBusPendingReply<uint>& reply) {
        answered(identifier, next, reply, generation);
      });
}

void NotificationServer::answered(const std::string& identifier, Waiting waited,
                                  const QDBusPendingReply<uint>& reply, int generation) {
  const auto found = slots_.find(identifier);
  if (found == slots_.end()) return;
  Slot& slot = found->second;
  slot.call.reset();
  const bool sameServer = generation == generation_;
  if (reply.isError()) {
    const bool died = reply.error().type() == QDBusError::NoReply;
    if (died || isServerMissing(reply.error())) {
      const bool diedTwice = died && waited.diedWithServer;
      waited.diedWithServer = waited.diedWithServer || died;
      if (!slot.waiting && !slot.isWithdrawn && !diedTwice) slot.waiting = std::move(waited);
      if (sameServer) presence_ = Presence::absent;
    }
  } else if (sameServer) {
    slot.id = reply.value();
    if (slot.isWithdrawn) {
      close(std::exchange(slot.id, 0));
    } else if (waited.bubble.sound && !capabilities_.sound && onSilentServer) {
      onSilentServer(*waited.bubble.sound);
    }
  }
  slot.isWithdrawn = false;
  if (slot.isIdle()) {
    slots_.erase(found);
    return;
  }
  // The next server may have come before the failure of this one was known.
  if (presence_ == Presence::unknown) requestCapabilities();
  showNext(identifier, slot);
}

bool NotificationServer::isAnyWaiting() const {
  return std::any_of(slots_.begin(), slots_.end(),
                     [](const auto& entry) { return entry.second.waiting.has_value(); });
}

void NotificationServer::close(uint id) {
  QDBusMessage message = method("CloseNotification");
  message << id;
  // A missing server has nothing to close.
  message.setAutoStartService(false);
  bus_.connection().send(message);
}

void NotificationServer::ownerChanged() {
  ++generation_;
  for (auto& [identifier, slot] : slots_) slot.id = 0;
  std::erase_if(slots_, [](const auto& entry) { return entry.second.isIdle(); });
  presence_ = owner_.name().isEmpty() ? Presence::absent : Presence::unknown;
  if (presence_ == Presence::unknown && isAnyWaiting()) requestCapabilities();
}

// The errors of a failed start are too many to list, but all leave the name without an owner.
bool NotificationServer::isServerMissing(const QDBusError& error) const {
  return owner_.name().isEmpty() || error.type() == QDBusError::Disconnected;
}

std::map<std::string, NotificationServer::Slot>::iterator NotificationServer::slotOf(
    uint id, const QDBusMessage& signal) {
  if (id == 0 || !owner_.sent(signal)) return slots_.end();
  return std::find_if(slots_.begin(), slots_.end(),
                      [id](const auto& entry) { return entry.second.id == id; });
}

void NotificationServer::actionInvoked(uint id, const QString& action, const QDBusMessage& signal) {
  if (slotOf(id, signal) == slots_.end()) return;
  // The user has answered. Some servers keep the bubble on show.
  close(id);
  if (onAction) onAction(action.toStdString());
}

void NotificationServer::notificationClosed(uint id, uint /*reason*/, const QDBusMessage& signal) {
  const auto found = slotOf(id, signal);
  if (found == slots_.end()) return;
  found->second.id = 0;
  if (found->second.isIdle()) slots_.erase(found);
}

}  // namespace tollbeam
