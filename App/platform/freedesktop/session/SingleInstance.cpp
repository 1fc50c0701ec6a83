#include "platform/freedesktop/session/SingleInstance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>
#include <utility>

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

QDBusMessage busMethod(const char* name) {
  return QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
      QStringLiteral("org.freedesktop.DBus"), QLatin1String(name));
}

}  // namespace

SingleInstance::SingleInstance(Bus& sessionBus, QObject* parent)
    : QObject(parent), bus_(sessionBus) {
  connect(&bus_, &Bus::restored, this, [this] {
    publish();
    // A start that had no answer from us may own the name for a moment.
    askForName(
        kQueue, [] {}, [] {});
  });
}

SingleInstance::~SingleInstance() {
  QDBusConnection bus = bus_.connection();
  bus.unregisterObject(kPath);
  // The process may need a moment to end; a start meanwhile is the first.
  bus.send(busMethod("ReleaseName") << kName);
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
  // The object stands before the name is asked for: who finds the name finds us.
  publish();
  askForName(kDoNotQueue, first, [this, first, other = std::move(other)] {
    askTheFirst([this, first, other](bool answered) {
      if (answered) {
        other();
      } else {
        // One that was about to end, or died, took our question along: then its place is free.
        askForName(kDoNotQueue, first, other);
      }
    });
  });
}

void SingleInstance::askForName(uint flags, std::function<void()> granted,
                                std::function<void()> taken) {
  auto request = busMethod("RequestName");
  request << kName << flags;
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(request, kPatienceMs), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [watcher, granted = std::move(granted), taken = std::move(taken)] {
            watcher->deleteLater();
            const QDBusPendingReply<uint> reply = *watcher;
            const bool isTaken = !reply.isError() && reply.value() != kPrimaryOwner &&
                                 reply.value() != kAlreadyOwner;
            if (isTaken) {
              taken();
            } else {
              granted();
            }
          });
}

void SingleInstance::askTheFirst(std::function<void(bool answered)> then) {
  auto activate =
      QDBusMessage::createMethodCall(kName, kPath, kInterface, QStringLiteral("Activate"));
  activate << QVariantMap();
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(activate, kPatienceMs), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, then = std::move(then)] {
    watcher->deleteLater();
    then(!watcher->isError());
  });
}

void SingleInstance::Activate(const QVariantMap&) {
  if (onActivate) onActivate();
}

void SingleInstance::Open(const QStringList&, const QVariantMap& platformData) {
  Activate(platformData);
}

void SingleInstance::ActivateAction(const QString&, const QVariantList&, const QVariantMap&) {}

}  // namespace tollbeam
