// The battery of a Linux machine: UPower's view of it where the daemon runs, the kernel's own where
// it does not or not yet, and the kernel's for what UPower does not tell. The table is kept up to
// date by signals, so a reading never waits for the daemon, even for one that hangs; that one is
// found out by what the kernel says. The kernel's events of chargers count beside UPower too: it
// signals nothing when a charger goes while the firmware still calls the battery full.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <memory>
#include <string>

#include "platform/PowerSources.h"
#include "platform/freedesktop/bus/RemoteProperties.h"
#include "platform/freedesktop/power/PowerSupplyMonitor.h"
#include "platform/freedesktop/power/readings/CountedPacks.h"
#include "platform/freedesktop/power/readings/PowerTableCache.h"
#include "platform/freedesktop/session/Readiness.h"
#include "platform/freedesktop/session/SleepHold.h"

namespace tollbeam {

/// How long a launch may wait for its first look at the battery, both counted from the start. The
/// program is not to be seen meanwhile.
struct LaunchPatience {
  /// Long enough for a daemon that the question has to start.
  std::chrono::milliseconds daemon{1500};
  /// Firmware that is not awake yet gets this long to tell the charge.
  std::chrono::milliseconds glitch{10000};
};

class FreedesktopPowerSources final : public PowerSources {
 public:
  /// `systemBus` and `workspace` outlive this object. A burst of changes is announced `settling`
  /// after its first: plugging in makes several signals within some ten milliseconds, and the
  /// kernel's files follow their events late.
  FreedesktopPowerSources(Bus& systemBus, Workspace& workspace,
                          std::string suppliesFolder = "/sys/class/power_supply",
                          LaunchPatience patience = {},
                          DaemonSilence::Patience patienceWithSilence = {},
                          std::chrono::milliseconds settling = std::chrono::milliseconds(500));

  [[nodiscard]] std::optional<List> descriptions() const override;
  [[nodiscard]] std::optional<Dictionary> smartBattery() const override;
  std::optional<Subscription> observe(std::function<void()> changed) override;

  /// Calls `ready` once, never before this returns: when the daemon has told all, is known to be
  /// absent, or has been silent for too long. A battery of which only a glitch is known is waited
  /// for somewhat longer. A look at the table before that may miss the daemon or the battery.
  Subscription whenReady(std::function<void()> ready);

 private:
  [[nodiscard]] std::optional<UPowerAnswer> daemonsAnswer() const;
  [[nodiscard]] std::optional<PowerSupplies> readKernel() const;
  [[nodiscard]] PowerTableCache::Table read() const;
  void lookForFirstReading();
  void onDaemonHeard();
  void onDaemonUpdated();
  void onReviewDue();
  void onKernelEvent(PowerSupplyMonitor::Change change);
  void onReady();
  void onSettled();
  void onHoldReleased();
  void watchKernel();
  void announceIfChanged(const PowerTableCache::Table& table);

  const Bus& bus_;
  const std::string suppliesFolder_;
  RemoteProperties device_;
  RemoteProperties manager_;
  // What a reading means depends on those before it, hence memories under a const read.
  mutable PowerTableCache cache_;
  mutable CountedPacks packs_;
  /// What observers last read or were last told of, absent before: what differs is announced.
  mutable std::optional<List> known_;
  /// Due when the table may change although nothing signals it.
  mutable QTimer review_;
  QElapsedTimer sinceStart_;
  /// The table is the kernel's, or may become it: events of batteries count.
  mutable bool followsKernelsBatteries_ = true;
  std::unique_ptr<PowerSupplyMonitor> kernelMonitor_;
  QTimer settling_;
  bool settleAgain_ = false;
  /// Nothing but a glitch has been read so far.
  bool glitched_ = false;
  Observers<> observers_;
  QTimer patienceWithDaemon_;
  Readiness readiness_;
  Subscription ownReadiness_;
  SleepHold hold_;
};

}  // namespace tollbeam
