#include "platform/freedesktop/power/PowerProfilesProcessInfo.h"

#include <QPointer>
#include <chrono>
#include <utility>

namespace tollbeam {

namespace {

constexpr std::chrono::milliseconds kLongestWait(1500);

// Starting the daemon may set another profile than the one in force.
constexpr auto kActivation = Activation::forbidden;

RemoteProperties::Address addressOf(const QString& name) {
  return {name, QLatin1Char('/') + QString(name).replace(QLatin1Char('.'), QLatin1Char('/')), name};
}

}  // namespace

PowerProfilesProcessInfo::PowerProfilesProcessInfo(Bus& systemBus, SleepHold& hold)
    : hold_(hold),
      profiles_(systemBus, addressOf(QStringLiteral("org.freedesktop.UPower.PowerProfiles")),
                {QStringLiteral("ActiveProfile")}, kActivation),
      olderProfiles_(systemBus, addressOf(QStringLiteral("net.hadess.PowerProfiles")),
                     {QStringLiteral("ActiveProfile")}, kActivation),
      readiness_(kLongestWait),
      holdReleased_(hold.onRelease([this] { announceIfChanged(); })) {
  for (auto* profiles : {&profiles_, &olderProfiles_}) {
    QObject::connect(profiles, &RemoteProperties::updated, profiles,
                     [this, profiles] { onUpdated(*profiles); });
  }
}

Subscription PowerProfilesProcessInfo::onPowerStateChange(std::function<void()> changed) {
  return observers_.add(std::move(changed));
}

Subscription PowerProfilesProcessInfo::whenReady(std::function<void()> ready) {
  return readiness_.whenReady(std::move(ready));
}

void PowerProfilesProcessInfo::onUpdated(const RemoteProperties& profiles) {
  using State = RemoteProperties::State;
  const bool anyKnown = profiles_.values() || olderProfiles_.values();
  const bool allAbsent =
      profiles_.state() == State::absent && olderProfiles_.state() == State::absent;

  const Value* active = profiles.values() ? find(*profiles.values(), "ActiveProfile") : nullptr;
  if (active && active->text() && !active->text()->empty()) {
    enabled_ = *active->text() == "power-saver";
  }

  const QPointer alive(&profiles);
  announceIfChanged();
  if (alive && (anyKnown || allAbsent) && !readiness_.isReady()) readiness_.markReady();
}

void PowerProfilesProcessInfo::announceIfChanged() {
  if (hold_.isHolding()) return;
  if (std::exchange(announced_, enabled_) != enabled_) observers_.notify();
}

}  // namespace tollbeam
