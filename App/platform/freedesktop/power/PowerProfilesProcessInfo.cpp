#include "platform/freedesktop/power/PowerProfilesProcessInfo.h"

#include <QPointer>
#include <chrono>
#include <utility>

namespace tollbeam {

namespace {

constexpr std::chrono::milliseconds longestWait(1500);

// Starting the daemon may set another profile than the one in force, and a program that only looks
// has no business doing that.
constexpr auto activation = Activation::forbidden;

RemoteProperties::Address currentAddress() {
  const auto name = QStringLiteral("org.freedesktop.UPower.PowerProfiles");
  return {name, QStringLiteral("/org/freedesktop/UPower/PowerProfiles"), name};
}

RemoteProperties::Address olderAddress() {
  const auto name = QStringLiteral("net.hadess.PowerProfiles");
  return {name, QStringLiteral("/net/hadess/PowerProfiles"), name};
}

}  // namespace

PowerProfilesProcessInfo::PowerProfilesProcessInfo(Bus& systemBus, Workspace& workspace)
    : profiles_(systemBus, currentAddress(), {QStringLiteral("ActiveProfile")}, activation),
      olderProfiles_(systemBus, olderAddress(), {QStringLiteral("ActiveProfile")}, activation),
      readiness_(longestWait),
      hold_(workspace, [this] { announceIfChanged(); }) {
  follow(profiles_);
  follow(olderProfiles_);
}

Subscription PowerProfilesProcessInfo::onPowerStateChange(std::function<void()> changed) {
  return observers_.add(std::move(changed));
}

Subscription PowerProfilesProcessInfo::whenReady(std::function<void()> ready) {
  return readiness_.whenReady(std::move(ready));
}

void PowerProfilesProcessInfo::follow(RemoteProperties& profiles) {
  QObject::connect(&profiles, &RemoteProperties::updated, &context_,
                   [this, &profiles] { onUpdated(profiles); });
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

  const QPointer<QObject> alive(&context_);
  announceIfChanged();
  if (alive && (anyKnown || allAbsent) && !readiness_.isReady()) readiness_.markReady();
}

void PowerProfilesProcessInfo::announceIfChanged() {
  if (hold_.isHolding()) return;
  if (std::exchange(announced_, enabled_) != enabled_) observers_.notify();
}

}  // namespace tollbeam
