#include "platform/freedesktop/RemoteProperties.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

#include "platform/freedesktop/DBusValue.h"

namespace tollbeam {

namespace {

const auto busService = QStringLiteral("org.freedesktop.DBus");
const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

}  // namespace

RemoteProperties::RemoteProperties(const QDBusConnection& bus, Address address, QStringList keys,
                                   Activation activation)
    : bus_(bus), address_(std::move(address)), keys_(std::move(keys)), activation_(activation) {
  // The rules name path and interface, so that the bus wakes us for nothing else. They name no
  // sender: with a service name the library would ask for its owner and wait. The sender is
  // checked when a signal comes.
  bus_.connect(busService, QString(), busService, QStringLiteral("NameOwnerChanged"),
               {address_.service}, QString(), this,
               SLOT(onOwnerChanged(QString, QString, QString)));
  bus_.connect(QString(), address_.path, propertiesInterface, QStringLiteral("PropertiesChanged"),
               {address_.interface}, QString(), this,
               SLOT(onPropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
  ask();
}

void RemoteProperties::ask() {
  auto call = QDBusMessage::createMethodCall(address_.service, address_.path, propertiesInterface,
                                             QStringLiteral("GetAll"));
  call << address_.interface;
  call.setAutoStartService(activation_ == Activation::allowed);
  if (!values_) state_ = State::asking;
  const int question = ++question_;
  if (!bus_.isConnected()) {
    // The library would never finish such a call.
    const auto refusal = QDBusMessage::createError(QDBusError::Disconnected, QString());
    QMetaObject::invokeMethod(
        this, [this, refusal] { take(refusal); }, Qt::QueuedConnection);
    return;
  }
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, question](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            if (question == question_) take(finished->reply());
          });
}

void RemoteProperties::take(const QDBusMessage& answer) {
  const auto arguments = answer.arguments();
  if (answer.type() == QDBusMessage::ReplyMessage && !arguments.isEmpty()) {
    owner_ = answer.service();
    values_ = followed(qdbus_cast<QVariantMap>(arguments.first()));
    state_ = State::known;
  } else {
    values_.reset();
    state_ = State::absent;
    // Nobody refused, our own patience ended: the service hangs. A question that waits for it is
    // answered the moment it goes on.
    const bool hangs = QDBusError(answer).type() == QDBusError::NoReply;
    if (hangs && answer.service().isEmpty()) ask();
  }
  Q_EMIT updated();
}

void RemoteProperties::onOwnerChanged(const QString& /*name*/, const QString& /*before*/,
                                      const QString& now) {
  values_.reset();
  owner_ = now;
  if (now.isEmpty()) {
    ++question_;
    state_ = State::absent;
  } else {
    ask();
  }
  Q_EMIT updated();
}

void RemoteProperties::onPropertiesChanged(const QString& /*interface*/, const QVariantMap& changed,
                                           const QStringList& invalidated,
                                           const QDBusMessage& message) {
  // What changes before the answer is in the answer.
  if (!values_ || message.service() != owner_) return;
  for (const auto& key : invalidated) {
    if (keys_.contains(key)) return ask();
  }
  auto news = followed(changed);
  news.merge(Dictionary(*values_));
  if (news == *values_) return;
  values_ = std::move(news);
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
