#include "platform/freedesktop/bus/RemoteProperties.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <limits>
#include <utility>

#include "platform/freedesktop/bus/DBusValue.h"

namespace tollbeam {

namespace {

constexpr int waitForever = std::numeric_limits<int>::max();

const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

}  // namespace

RemoteProperties::RemoteProperties(Bus& bus, Address address, QStringList keys,
                                   Activation activation)
    : bus_(bus),
      address_(std::move(address)),
      keys_(std::move(keys)),
      owner_(bus_, address_.service, activation) {
  // The rule names path and interface, so that the bus wakes us for nothing else.
  bus_.listen(address_.path, propertiesInterface, QStringLiteral("PropertiesChanged"),
              {address_.interface}, this,
              SLOT(onPropertiesChanged(QString, QVariantMap, QStringList, QDBusMessage)));
  connect(&owner_, &ServiceOwner::changed, this, &RemoteProperties::onOwnerChanged);
}

void RemoteProperties::ask(int timeout) {
  auto call = QDBusMessage::createMethodCall(address_.service, address_.path, propertiesInterface,
                                             QStringLiteral("GetAll"));
  call << address_.interface;
  // A service that has gone meanwhile is not started for this.
  call.setAutoStartService(false);
  const int question = ++question_;
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, timeout), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, question](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            if (question == question_) take(finished->reply());
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
    // Our patience ended, and the service has an owner still: it hangs. A question that waits for
    // it is answered the moment it goes on.
    if (QDBusError(answer).type() == QDBusError::NoReply) ask(waitForever);
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
    ask(Bus::kUsualTimeout);
  }
  Q_EMIT updated();
}

void RemoteProperties::onPropertiesChanged(const QString& /*interface*/, const QVariantMap& changed,
                                           const QStringList& invalidated,
                                           const QDBusMessage& message) {
  // What changes before the answer is in the answer.
  if (!values_ || !owner_.sent(message)) return;
  Q_EMIT heard();
  for (const auto& key : invalidated) {
    if (keys_.contains(key)) return ask(Bus::kUsualTimeout);
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
