// The samples of the last 30 days, oldest first, and their file. Everything relies on the
// ascending order: it is sorted once at load and callers record with non-decreasing times. File
// problems are quiet: an unreadable file is an empty history and stays on disk until the next
// save; a failed write is tried again with the next save. Main thread only.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "battery/BatteryState.h"
#include "history/DaySummary.h"
#include "history/Sample.h"
#include "platform/Date.h"
#include "platform/FileManager.h"

namespace tollbeam {

class HistoryStore {
 public:
  /// Loads "Tollbeam/history.json" of the user's application support. Stops the process when the
  /// user has no such folder at all.
  HistoryStore(FileManager& files, Date now);
  HistoryStore(const HistoryStore&) = delete;
  HistoryStore& operator=(const HistoryStore&) = delete;

  /// Appends a sample of `state` when percent, charging or external power moved, or when forced;
  /// nothing without a battery. Saves at once when charging or external power changed, otherwise
  /// when the last save is more than 300 seconds ago.
  void record(const BatteryState& state, Date at, bool force);

  /// Writes the file, whether or not anything changed.
  void save(Date now);

  /// Forgets all samples; the file follows at the next save.
  void removeAll() { samples_.clear(); }

  [[nodiscard]] const std::vector<Sample>& samples() const { return samples_; }

  /// The samples at or after `since`. Valid until the history changes.
  [[nodiscard]] std::span<const Sample> samples(Date since) const;

  /// Since when the machine has been plugged in, as far as samples without a gap over 900 seconds
  /// tell; absent when the last one is not plugged in or 600 seconds old.
  [[nodiscard]] std::optional<Date> pluggedSinceEstimate(Date now) const;

  [[nodiscard]] std::string csv() const;

  /// The last `days` calendar days, today included, newest first; days without samples are left
  /// out.
  [[nodiscard]] std::vector<DaySummary> dailySummaries(int days, Date now,
                                                       const Calendar& calendar) const;

 private:
  void prune(Date now);

  FileManager& files_;
  std::vector<Sample> samples_;
  std::string url_;
  Date lastSave_ = Date::distantPast();
};

}  // namespace tollbeam
