#include "platform/freedesktop/PowerProfilesProcessInfo.h"

#include <QPointer>
#include <chrono>
#include <utility>

namespace tollbeam {

namespace {

constexpr std::chrono::milliseconds longestWait(1500);

// Starting the daemon may set another profile than the one in force, and a program that only looks
// has no business doing that.
constexpr auto activation = RemoteProperties::Activation::forbidden;

RemoteProperties::Address currentAddress() {
  const auto name = QStringLiteral("org.freedesktop.UPower.PowerProfiles");
  return {name, QStringLiteral("/org/freedesktop/UPower/PowerProfiles"), name};
}

RemoteProperties::Address olderAddress() {
  const auto name = QStringLiteral("net.hadess.PowerProfiles");
  return {name, QStringLiteral("/net/hadess/PowerProfiles"), name};
}

}  // namespace

PowerProfilesProcessInfo::PowerProfilesProcessInfo(const QDBusConnection& systemBus)
    : profiles_(systemBus, currentAddress(), {QStringLiteral("ActiveProfile")}, activation),
      olderProfiles_(systemBus, olderAddress(), {QStringLiteral("ActiveProfile")}, activation),
      readiness_(longestWait) {
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

  bool changed = false;
  const Value* active = profiles.values() ? find(*profiles.values(), "ActiveProfile") : nullptr;
  if (active && active->text() && !active->text()->empty()) {
    const bool saving = *active->text() == "power-saver";
    changed = std::exchange(enabled_, saving) != saving;
  }

  const QPointer<QObject> alive(&context_);
  if (changed) observers_.notify();
  if (alive && (anyKnown || allAbsent) && !readiness_.isReady()) readiness_.markReady();
}

}  // namespace tollbeam
