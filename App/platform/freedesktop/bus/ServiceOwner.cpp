#include "platform/freedesktop/bus/ServiceOwner.h"

#include <QDBusPendingCallWatcher>
#include <utility>

namespace tollbeam {

namespace {

const QString kBus = QStringLiteral("org.freedesktop.DBus");
const QString kBusPath = QStringLiteral("/org/freedesktop/DBus");

}  // namespace

ServiceOwner::ServiceOwner(Bus& bus, QString service, Activation activation)
    : bus_(bus), service_(std::move(service)), activation_(activation) {
  bus_.listen(kBusPath, kBus, QStringLiteral("NameOwnerChanged"), {service_}, this,
              SLOT(onNameOwnerChanged(QString, QString, QString, QDBusMessage)));
  connect(&bus_, &Bus::lost, this, [this] {
    ++question_;
    settle({});
  });
  connect(&bus_, &Bus::restored, this, &ServiceOwner::ask);
  ask();
}

void ServiceOwner::askBus(const char* method, const QVariantList& arguments,
                          const std::function<void(const QDBusMessage&)>& answered) {
  auto call = QDBusMessage::createMethodCall(kBus, kBusPath, kBus, QLatin1String(method));
  call.setArguments(arguments);
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [answered](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            answered(finished->reply());
          });
}

void ServiceOwner::ask() {
  askBus("GetNameOwner", {service_}, [this, question = ++question_](const QDBusMessage& answer) {
    // The library may deliver a later announcement first.
    if (question != question_) return;
    if (answer.type() == QDBusMessage::ReplyMessage) {
      settle(answer.arguments().value(0).toString());
    } else if (activation_ == Activation::allowed) {
      start();
    } else {
      settle({});
    }
  });
}

void ServiceOwner::start() {
  constexpr uint kNoFlags = 0;
  askBus("StartServiceByName", {service_, kNoFlags}, [this](const QDBusMessage& answer) {
    // The owner of one that was started has been announced.
    if (answer.type() != QDBusMessage::ReplyMessage && name_.isEmpty()) settle({});
  });
}

void ServiceOwner::onNameOwnerChanged(const QString& /*service*/, const QString& /*before*/,
                                      const QString& now, const QDBusMessage& message) {
  if (message.service() != kBus) return;
  ++question_;
  settle(now);
}

void ServiceOwner::settle(const QString& name) {
  name_ = name;
  Q_EMIT changed();
}

}  // namespace tollbeam
