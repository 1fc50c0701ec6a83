// Decides whether the power-source table is UPower's or the kernel's. UPower's, if it reports an
// internal battery; otherwise the kernel's, so that a restart of the daemon never makes the battery
// vanish, and also when the daemon hangs. A glitch is no reading: the last table stands until
// UPower or the kernel has a real one. A charger's flapping contact is steadied in either.
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
    /// Absent when neither UPower nor the kernel reports anything.
    std::optional<List> sources;
    /// The table is the kernel's, or may become it: then the kernel's changes must be watched.
    bool fromKernel = false;
    /// A battery is there, but nothing real has been reported of it yet. It is not absent.
    bool isGlitch = false;
  };

  PowerTableCache() = default;
  explicit PowerTableCache(DaemonSilence::Patience patience) : silence_(patience) {}

  /// `upower` is absent while the daemon has not answered, `kernel` if it cannot be read.
  [[nodiscard]] Table update(const std::optional<UPowerAnswer>& upower,
                             const std::optional<PowerSupplies>& kernel, Time now);

  /// When the table may change without a signal: call `review`, then `update`.
  [[nodiscard]] std::optional<Time> due() const;

  /// Whether the daemon is to be queried now, to find out whether it hangs.
  [[nodiscard]] bool review(Time now) { return silence_.review(now); }

  /// To be called when the daemon answers or sends a signal. Whether it had been silent.
  bool heardFromDaemon();

  /// The next change of external power counts at once, whatever came before.
  void forgetContact() { contact_.forget(); }

 private:
  [[nodiscard]] Table decide(bool daemonAnswers, const std::optional<SourceReading>& daemons,
                             bool kernelAnswers, const std::optional<SourceReading>& kernels,
                             Time now);
  [[nodiscard]] List tableOf(const std::optional<SourceReading>& reading, Time now);

  Table last_;
  SteadyContact contact_;
  /// The last decision steadied a reading.
  bool steadied_ = false;
  DaemonSilence silence_;
};

}  // namespace tollbeam
