#include "platform/freedesktop/session/SingleInstance.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QTimer>
#include <utility>

#include "platform/freedesktop/bus/WhenFinished.h"

namespace tollbeam {

namespace {

const QString kName = QStringLiteral("org.tollbeam.Tollbeam");
const QString kPath = QStringLiteral("/org/tollbeam/Tollbeam");
const QString kInterface = QStringLiteral("org.freedesktop.Application");
constexpr int kPatienceMs = 5000;

// Flags and answers of RequestName.
constexpr uint kQueue = 0;
constexpr uint kDoNotQueue = 4;
constexpr uint kPrimaryOwner = 1;
constexpr uint kAlreadyOwner = 4;

}  // namespace

SingleInstance::SingleInstance(Bus& sessionBus, QObject* parent)
    : QObject(parent), bus_(sessionBus) {
  connect(&bus_, &Bus::restored, this, [this] {
    publish();
    // A start that got no answer from this one may own the name for a moment.
    askForName(
        kQueue, [] {}, [] {});
  });
}

SingleInstance::~SingleInstance() {
  QDBusConnection bus = bus_.connection();
  bus.unregisterObject(kPath);
  // The process may take a moment to end; the next start need not wait for that.
  bus.send(Bus::method("ReleaseName", {kName}));
}

void SingleInstance::publish() {
  QDBusConnection(bus_.connection())
      .registerObject(kPath, this, QDBusConnection::ExportScriptableSlots);
}

void SingleInstance::begin(std::function<void()> first, std::function<void()> other) {
  if (!bus_.isConnected()) {
    QTimer::singleShot(0, this, std::move(first));
    return;
  }
  // Before the request, so that the owner of the name always has the object.
  publish();
  askForName(kDoNotQueue, first, [this, first, other = std::move(other)] {
    auto activate =
        QDBusMessage::createMethodCall(kName, kPath, kInterface, QStringLiteral("Activate"));
    activate << QVariantMap();
    const auto answered = [this, first, other](const QDBusPendingCall& call) {
      if (!call.isError()) {
        other();
      } else {
        // The owner ended before it could answer, or hangs: try to take its place.
        askForName(kDoNotQueue, first, other);
      }
    };
    whenFinished(bus_.asyncCall(activate, kPatienceMs), this, answered);
  });
}

void SingleInstance::askForName(uint flags, std::function<void()> granted,
                                std::function<void()> taken) {
  const auto answered = [granted = std::move(granted),
                         taken = std::move(taken)](const QDBusPendingReply<uint>& result) {
    const bool isTaken =
        result.isValid() && result.value() != kPrimaryOwner && result.value() != kAlreadyOwner;
    (isTaken ? taken : granted)();
  };
  whenFinished(bus_.asyncCall(Bus::method("RequestName", {kName, flags}), kPatienceMs), this,
               answered);
}

void SingleInstance::Activate(const QVariantMap&) {
  if (onActivate) onActivate();
}

void SingleInstance::Open(const QStringList&, const QVariantMap& platformData) {
  Activate(platformData);
}

void SingleInstance::ActivateAction(const QString&, const QVariantList&, const QVariantMap&) {}

}  // namespace tollbeam
