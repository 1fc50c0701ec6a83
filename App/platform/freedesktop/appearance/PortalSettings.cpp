#include "platform/freedesktop/appearance/PortalSettings.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "platform/freedesktop/bus/DBusValue.h"

namespace tollbeam {
namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kSignatureOfAll = QStringLiteral("a{sa{sv}}");

// A portal that starts asks its own helpers first, which may take long; a call that never ends by
// itself ends when the portal leaves the bus.
constexpr int kNever = std::numeric_limits<int>::max();

// Portals that hang and hand their name on would keep any number of questions open.
constexpr int kMostOpen = 4;

constexpr std::array<std::string_view, 3> kDesktopsOfPortals{"GNOME", "Pantheon", "COSMIC"};

Dictionary settingsOf(const QDBusMessage& answer) {
  Dictionary settings;
  if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != kSignatureOfAll)
    return settings;
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
  while (!currentDesktop.empty()) {
    const auto end = std::min(currentDesktop.find(':'), currentDesktop.size());
    const auto name = currentDesktop.substr(0, end);
    if (std::find(kDesktopsOfPortals.begin(), kDesktopsOfPortals.end(), name) !=
        kDesktopsOfPortals.end())
      return Activation::allowed;
    currentDesktop.remove_prefix(std::min(end + 1, currentDesktop.size()));
  }
  return Activation::forbidden;
}

PortalSettings::PortalSettings(Bus& bus, QStringList namespaces, Activation activation)
    : bus_(bus), namespaces_(std::move(namespaces)), owner_(bus_, kService, activation) {
  // A slot whose parameters Qt does not know by name yet is never connected.
  qRegisterMetaType<QDBusVariant>();
  // The rules name the namespaces, so that the bus wakes us for nothing else.
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
  heard_.clear();
  unsent_ = open_ == kMostOpen;
  if (unsent_) return;
  ++open_;
  auto call =
      QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("ReadAll"));
  call << namespaces_;
  // One that has gone meanwhile is not started for this.
  call.setAutoStartService(false);
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, kNever), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, question](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            --open_;
            if (question == question_) {
              take(finished->reply());
            } else if (unsent_) {
              ask();
            }
          });
}

void PortalSettings::take(const QDBusMessage& answer) {
  asking_ = false;
  const auto heard = std::exchange(heard_, {});
  if (answer.type() != QDBusMessage::ReplyMessage) return;
  auto settings = settingsOf(answer);
  for (const auto& news : heard) apply(news, settings);
  store(std::move(settings));
}

void PortalSettings::onSettingChanged(const QString& group, const QString& key,
                                      const QDBusVariant& value, const QDBusMessage& message) {
  if (!owner_.sent(message)) return;
  const News news{group.toStdString(), key.toStdString(), valueFromBus(value.variant())};
  if (asking_) {
    std::erase_if(heard_, [&news](const News& earlier) {
      return earlier.group == news.group && earlier.key == news.key;
    });
    heard_.push_back(news);
  } else {
    auto settings = settings_;
    apply(news, settings);
    store(std::move(settings));
  }
}

void PortalSettings::apply(const News& news, Dictionary& settings) {
  const Value* known = find(settings, news.group);
  Dictionary keys;
  if (known != nullptr && known->dictionary() != nullptr) keys = *known->dictionary();
  keys.erase(news.key);
  if (news.value) keys.emplace(news.key, *news.value);
  settings.insert_or_assign(news.group, Value(std::move(keys)));
}

void PortalSettings::store(Dictionary settings) {
  if (settings == settings_) return;
  settings_ = std::move(settings);
  Q_EMIT changed();
}

}  // namespace tollbeam
