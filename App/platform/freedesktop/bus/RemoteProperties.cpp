#include "platform/freedesktop/bus/RemoteProperties.h"

#include <QDBusArgument>
#include <QDBusError>
#include <limits>
#include <utility>

#include "platform/freedesktop/bus/DBusValue.h"
#include "platform/freedesktop/bus/WhenFinished.h"

namespace tollbeam {

namespace {

constexpr int kForever = std::numeric_limits<int>::max();

const auto kPropertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

}  // namespace

RemoteProperties::RemoteProperties(Bus& bus, Address address, QStringList keys,
                                   Activation activation)
    : bus_(bus),
      address_(std::move(address)),
      keys_(std::move(keys)),
      owner_(bus_, address_.service, activation) {
  // The rule names path and interface, so that no other signal wakes the process.
  bus_.listen(address_.path, kPropertiesInterface, QStringLiteral("PropertiesChanged"),
              {address_.interface}, this,
              SLOT(onPropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
  connect(&owner_, &ServiceOwner::changed, this, &RemoteProperties::onOwnerChanged);
}

void RemoteProperties::ask(int timeout) {
  auto call = QDBusMessage::createMethodCall(address_.service, address_.path, kPropertiesInterface,
                                             QStringLiteral("GetAll"));
  call << address_.interface;
  // The service may have gone meanwhile; this must not start it.
  call.setAutoStartService(false);
  whenFinished(bus_.asyncCall(call, timeout), this,
               [this, question = ++question_](const QDBusPendingCall& finished) {
                 if (question == question_) take(finished.reply());
               });
}

void RemoteProperties::take(const QDBusMessage& answer) {
  const auto arguments = answer.arguments();
  if (answer.type() == QDBusMessage::ReplyMessage && !arguments.isEmpty()) {
    values_ = followed(qdbus_cast<QVariantMap>(arguments.first()));
    state_ = State::known;
    Q_EMIT heard();
  } else {
    values_.reset();
    state_ = State::absent;
    // The service has an owner but hangs. A call without a timeout is answered as soon as it goes
    // on.
    if (QDBusError(answer).type() == QDBusError::NoReply) ask(kForever);
  }
  Q_EMIT updated();
}

void RemoteProperties::onOwnerChanged() {
  values_.reset();
  if (owner_.name().isEmpty()) {
    ++question_;
    state_ = State::absent;
  } else {
    state_ = State::asking;
    ask();
  }
  Q_EMIT updated();
}

void RemoteProperties::onPropertiesChanged(const QString& /*interface*/, const QVariantMap& changed,
                                           const QStringList& invalidated,
                                           const QDBusMessage& message) {
  // The answer to an open question contains this change.
  if (!values_ || !owner_.sent(message)) return;
  Q_EMIT heard();
  for (const auto& key : invalidated) {
    if (keys_.contains(key)) return ask();
  }
  auto values = followed(changed);
  values.merge(Dictionary(*values_));
  if (values == *values_) return;
  values_ = std::move(values);
  Q_EMIT updated();
}

Dictionary RemoteProperties::followed(const QVariantMap& properties) const {
  Dictionary kept;
  for (const auto& key : keys_) {
    if (const auto value = valueFromBus(properties.value(key)))
      kept.emplace(key.toStdString(), *value);
  }
  return kept;
}

}  // namespace tollbeam
