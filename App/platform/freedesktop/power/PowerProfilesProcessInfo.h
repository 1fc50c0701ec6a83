// Low Power Mode as the power profile "power-saver". The daemon has had two names, and systems have
// either or both. While no daemon answers, its last word stands: the profile is the kernel's and
// does not change because a daemon stops.
#pragma once

#include <QObject>

#include "platform/ProcessInfo.h"
#include "platform/freedesktop/bus/RemoteProperties.h"
#include "platform/freedesktop/session/Readiness.h"
#include "platform/freedesktop/session/SleepHold.h"

namespace tollbeam {

class PowerProfilesProcessInfo final : public ProcessInfo {
 public:
  /// `systemBus` and `workspace` outlive this object.
  PowerProfilesProcessInfo(Bus& systemBus, Workspace& workspace);

  [[nodiscard]] bool isLowPowerModeEnabled() const override { return enabled_; }
  Subscription onPowerStateChange(std::function<void()> changed) override;

  /// Calls `ready` once, never before this returns: when a daemon has answered, none is there, or
  /// it has been silent for too long.
  Subscription whenReady(std::function<void()> ready);

 private:
  void follow(RemoteProperties& profiles);
  void onUpdated(const RemoteProperties& profiles);
  void announceIfChanged();

  RemoteProperties profiles_;
  RemoteProperties olderProfiles_;
  bool enabled_ = false;
  /// What the observers know.
  bool announced_ = false;
  Observers<> observers_;
  Readiness readiness_;
  QObject context_;
  SleepHold hold_;
};

}  // namespace tollbeam
