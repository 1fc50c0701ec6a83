#include "platform/freedesktop/appearance/PortalSettings.h"

#include <QDBusArgument>
#include <QVariantMap>
#include <limits>
#include <utility>

#include "platform/freedesktop/bus/DBusValue.h"
#include "platform/freedesktop/bus/WhenFinished.h"

namespace tollbeam {
namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");

// A portal that starts asks its own helpers first, which may take long; a call without a time limit
// ends when the portal leaves the bus.
constexpr int kNever = std::numeric_limits<int>::max();

// Portals that hang and pass their name on would keep any number of questions open.
constexpr int kMostOpen = 4;

Dictionary settingsOf(const QDBusMessage& answer) {
  Dictionary settings;
  if (answer.signature() != QStringLiteral("a{sa{sv}}")) return settings;
  const auto all =
      qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().first().value<QDBusArgument>());
  for (auto group = all.cbegin(); group != all.cend(); ++group) {
    Dictionary keys;
    for (auto key = group->cbegin(); key != group->cend(); ++key) {
      if (const auto value = valueFromBus(*key)) keys.emplace(key.key().toStdString(), *value);
    }
    settings.emplace(group.key().toStdString(), std::move(keys));
  }
  return settings;
}

}  // namespace

Activation portalActivationOn(std::string_view currentDesktop) {
  const auto names = QLatin1String(currentDesktop.data(), qsizetype(currentDesktop.size()));
  for (const auto& name : QString(names).split(QLatin1Char(':'))) {
    for (const char* desktop : {"GNOME", "Pantheon", "COSMIC"}) {
      if (name == QLatin1String(desktop)) return Activation::allowed;
    }
  }
  return Activation::forbidden;
}

PortalSettings::PortalSettings(Bus& bus, QStringList namespaces, Activation activation)
    : bus_(bus), namespaces_(std::move(namespaces)), owner_(bus_, kService, activation) {
  // Qt connects no slot with parameters whose names it does not know yet.
  qRegisterMetaType<QDBusVariant>();
  // The rules name the namespaces, so that no other signal wakes the program.
  for (const auto& group : namespaces_) {
    bus_.listen(kPath, kInterface, QStringLiteral("SettingChanged"), {group}, this,
                SLOT(onSettingChanged(QString, QString, QDBusVariant, QDBusMessage)));
  }
  connect(&owner_, &ServiceOwner::changed, this, [this] {
    if (!owner_.name().isEmpty()) ask();
  });
}

void PortalSettings::ask() {
  const int question = ++question_;
  asking_ = true;
  changes_.clear();
  unsent_ = open_ == kMostOpen;
  if (unsent_) return;
  ++open_;
  auto call =
      QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("ReadAll"));
  call << namespaces_;
  // A portal that has gone meanwhile is not started for this.
  call.setAutoStartService(false);
  whenFinished(bus_.asyncCall(call, kNever), this,
               [this, question](const QDBusPendingCall& answered) {
                 --open_;
                 if (question == question_)
                   take(answered.reply());
                 else if (unsent_)
                   ask();
               });
}

void PortalSettings::take(const QDBusMessage& answer) {
  asking_ = false;
  const auto changes = std::exchange(changes_, {});
  if (answer.type() == QDBusMessage::ReplyMessage) store(settingsOf(answer), changes);
}

void PortalSettings::onSettingChanged(const QString& group, const QString& key,
                                      const QDBusVariant& value, const QDBusMessage& message) {
  if (!owner_.sent(message)) return;
  const auto setting = std::pair(group.toStdString(), key.toStdString());
  if (asking_)
    changes_[setting] = valueFromBus(value.variant());
  else
    store(settings_, {{setting, valueFromBus(value.variant())}});
}

void PortalSettings::store(Dictionary settings, const Changes& changes) {
  for (const auto& [setting, value] : changes) {
    const auto& [group, key] = setting;
    const Value* known = find(settings, group);
    Dictionary keys;
    if (known != nullptr && known->dictionary() != nullptr) keys = *known->dictionary();
    keys.erase(key);
    if (value) keys.emplace(key, *value);
    settings.insert_or_assign(group, Value(std::move(keys)));
  }
  if (settings == settings_) return;
  settings_ = std::move(settings);
  Q_EMIT changed();
}

}  // namespace tollbeam
