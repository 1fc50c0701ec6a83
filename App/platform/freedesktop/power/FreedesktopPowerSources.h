// The battery of a Linux machine: as UPower reports it while the daemon runs, as the kernel does
// otherwise, and from the kernel always what UPower does not report. Signals keep UPower's values
// up to date, so a reading never waits for the daemon; a daemon that hangs is found out by
// comparing it with the kernel. The kernel's events of chargers count beside UPower too: it sends
// no signal when a charger goes while the firmware still calls the battery full.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <string>

#include "platform/PowerSources.h"
#include "platform/freedesktop/bus/RemoteProperties.h"
#include "platform/freedesktop/power/PowerSupplyMonitor.h"
#include "platform/freedesktop/power/readings/CountedPacks.h"
#include "platform/freedesktop/power/readings/PowerTableCache.h"
#include "platform/freedesktop/session/Readiness.h"
#include "platform/freedesktop/session/SleepHold.h"

namespace tollbeam {

struct PowerTiming {
  /// How long a launch waits for the daemon's answer: long enough for one that has to be started.
  std::chrono::milliseconds daemon{1500};
  /// How long a launch waits for firmware that is not awake yet to report the charge.
  std::chrono::milliseconds glitch{10000};
  /// When a daemon counts as hanging.
  DaemonSilence::Patience silence;
  /// A burst of changes is announced this long after its first: plugging in sends several signals
  /// within some ten milliseconds, and the kernel's files follow their events late.
  std::chrono::milliseconds settling{500};
};

class FreedesktopPowerSources final : public PowerSources {
 public:
  /// `systemBus` and `hold` outlive this object.
  FreedesktopPowerSources(Bus& systemBus, SleepHold& hold,
                          std::string suppliesFolder = "/sys/class/power_supply",
                          PowerTiming timing = {});

  [[nodiscard]] std::optional<List> descriptions() const override;
  [[nodiscard]] std::optional<Dictionary> smartBattery() const override;
  std::optional<Subscription> observe(std::function<void()> changed) override;

  /// Calls `ready` once, never before this returns: when the daemon has answered, is absent, or has
  /// been silent for too long, and a battery that is there has reported its charge or has not done
  /// so for too long. A reading before that may miss the battery.
  Subscription whenReady(std::function<void()> ready);

 private:
  [[nodiscard]] std::optional<UPowerAnswer> daemonsAnswer() const;
  [[nodiscard]] std::optional<PowerSupplies> readKernel() const;
  [[nodiscard]] PowerTableCache::Table read() const;
  void tryFirstReading();
  void onDaemonUpdated();
  void onReviewDue();
  void onKernelEvent(PowerSupplyMonitor::Change change);
  void onSettled();
  void announceIfChanged();

  const Bus& bus_;
  const SleepHold& hold_;
  const std::string suppliesFolder_;
  RemoteProperties device_;
  RemoteProperties manager_;
  PowerSupplyMonitor kernelMonitor_;
  // What a reading means depends on those before it, hence state that changes in a const read.
  mutable PowerTableCache cache_;
  mutable CountedPacks packs_;
  /// What observers last read or were last notified of, absent before: a difference is announced.
  mutable std::optional<List> known_;
  /// Due when the table may change without a signal.
  mutable QTimer review_;
  /// The kernel's events of batteries count: the table is the kernel's, or may become it.
  mutable bool followsKernelsBatteries_ = true;
  QElapsedTimer sinceStart_;
  QTimer patienceWithDaemon_;
  QTimer settling_;
  bool settleAgain_ = false;
  /// All readings so far were glitches.
  bool glitched_ = false;
  Observers<> observers_;
  Readiness readiness_;
  Subscription ownReadiness_;
  Subscription holdReleased_;
};

}  // namespace tollbeam
