// Low Power Mode as the power profile "power-saver". The daemon has had two names, and systems have
// either or both. While no daemon answers, the last answer stands: the profile is the kernel's and
// does not change because a daemon stops.
#pragma once

#include "platform/ProcessInfo.h"
#include "platform/freedesktop/bus/RemoteProperties.h"
#include "platform/freedesktop/session/Readiness.h"
#include "platform/freedesktop/session/SleepHold.h"

namespace tollbeam {

class PowerProfilesProcessInfo final : public ProcessInfo {
 public:
  /// `systemBus` and `hold` outlive this object.
  PowerProfilesProcessInfo(Bus& systemBus, SleepHold& hold);

  [[nodiscard]] bool isLowPowerModeEnabled() const override { return enabled_; }
  Subscription onPowerStateChange(std::function<void()> changed) override;

  /// Calls `ready` once, never before this returns: when a daemon has answered, when there is none,
  /// or after 1.5 seconds.
  Subscription whenReady(std::function<void()> ready);

 private:
  void onUpdated(const RemoteProperties& profiles);
  void announceIfChanged();

  const SleepHold& hold_;
  RemoteProperties profiles_;
  RemoteProperties olderProfiles_;
  bool enabled_ = false;
  /// As last announced to the observers.
  bool announced_ = false;
  Observers<> observers_;
  Readiness readiness_;
  Subscription holdReleased_;
};

}  // namespace tollbeam
