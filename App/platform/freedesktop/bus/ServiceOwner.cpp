#include "platform/freedesktop/bus/ServiceOwner.h"

#include <QDBusPendingReply>
#include <utility>

#include "platform/freedesktop/bus/WhenFinished.h"

namespace tollbeam {

ServiceOwner::ServiceOwner(Bus& bus, QString service, Activation activation)
    : bus_(bus), service_(std::move(service)), activation_(activation) {
  bus_.listen(QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
              QStringLiteral("NameOwnerChanged"), {service_}, this,
              SLOT(onNameOwnerChanged(QString, QString, QString, QDBusMessage)));
  connect(&bus_, &Bus::lost, this, [this] {
    ++question_;
    settle({});
  });
  connect(&bus_, &Bus::restored, this, &ServiceOwner::ask);
  ask();
}

void ServiceOwner::ask() {
  const auto take = [this, question = ++question_](const QDBusPendingReply<QString>& owner) {
    // Qt may deliver a later NameOwnerChanged first.
    if (question != question_) return;
    if (owner.isValid()) {
      settle(owner.value());
    } else if (activation_ == Activation::allowed) {
      start();
    } else {
      settle({});
    }
  };
  whenFinished(bus_.asyncCall(Bus::method("GetNameOwner", {service_})), this, take);
}

void ServiceOwner::start() {
  constexpr uint kNoFlags = 0;
  whenFinished(bus_.asyncCall(Bus::method("StartServiceByName", {service_, kNoFlags})), this,
               [this](const QDBusPendingCall& call) {
                 // A service that was started has been announced by NameOwnerChanged.
                 if (call.isError() && name_.isEmpty()) settle({});
               });
}

void ServiceOwner::onNameOwnerChanged(const QString& /*service*/, const QString& /*before*/,
                                      const QString& now, const QDBusMessage& message) {
  if (message.service() != QStringLiteral("org.freedesktop.DBus")) return;
  ++question_;
  settle(now);
}

void ServiceOwner::settle(const QString& name) {
  name_ = name;
  Q_EMIT changed();
}

}  // namespace tollbeam
