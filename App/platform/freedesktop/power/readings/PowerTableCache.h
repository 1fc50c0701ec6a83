// Decides whose word the power-source table is. UPower's, when it has one about an internal
// battery; the kernel's otherwise, so that a restart of the daemon never makes the battery vanish,
// and in place of a daemon that hangs. A glitch is no reading: what was known before stands until
// somebody has a real one. A charger's flapping contact is steadied, whoever tells of it.
#pragma once

#include <chrono>
#include <optional>

#include "platform/freedesktop/power/readings/DaemonSilence.h"
#include "platform/freedesktop/power/readings/PowerSupplies.h"
#include "platform/freedesktop/power/readings/SteadyContact.h"
#include "platform/freedesktop/power/readings/UPowerReading.h"
#include "values/Value.h"

namespace tollbeam {

class PowerTableCache {
 public:
  /// Since any fixed moment; never goes back.
  using Time = std::chrono::milliseconds;

  struct Table {
    /// Absent when neither UPower nor the kernel tells anything.
    std::optional<List> sources;
    /// The kernel's word, or about to become it: its changes are what to watch then.
    bool fromKernel = false;
    /// A battery is there, but nobody has told anything real of it yet: no news of its absence.
    bool isGlitch = false;
  };

  PowerTableCache() = default;
  explicit PowerTableCache(DaemonSilence::Patience patience) : silence_(patience) {}

  /// `upower` is absent while the daemon has not answered, `kernel` when it cannot be read.
  [[nodiscard]] Table update(const std::optional<UPowerAnswer>& upower,
                             const std::optional<PowerSupplies>& kernel, Time now);

  /// When the table may change although nothing is signalled: `review`, then `update` it.
  [[nodiscard]] std::optional<Time> due() const;

  /// Whether the daemon is to be asked for its properties now, to see whether it hangs.
  [[nodiscard]] bool review(Time now) { return silence_.review(now); }

  [[nodiscard]] bool isDaemonSilent() const { return silence_.isSilent(); }

  /// The daemon answered or signalled.
  void heardFromDaemon() { silence_.heard(); }

  /// The next change of external power counts at once, whatever came before.
  void forgetContact() { contact_.forget(); }

 private:
  [[nodiscard]] Table decide(bool daemonAnswers, const std::optional<SourceReading>& daemons,
                             bool kernelAnswers, const std::optional<SourceReading>& kernels,
                             Time now);
  [[nodiscard]] List tableOf(const std::optional<SourceReading>& reading, Time now);

  Table last_;
  SteadyContact contact_;
  /// The last decision gave the contact a reading.
  bool steadied_ = false;
  DaemonSilence silence_;
};

}  // namespace tollbeam
