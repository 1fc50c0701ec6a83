// The samples of the last 30 days, oldest first, and their file. Everything relies on the
// ascending order: it is sorted once at load and callers record with non-decreasing times. File
// problems are quiet: an unreadable file is an empty history and stays on disk until the next
// save; a failed write is tried again with the next save.
//
// A save never destroys samples that this store does not hold. It first renames the old file, to
//   history.json.unreadable  when it was there at load and could not be read,
//   history.json.damaged     when it was no list of samples,
//   history.json.pruned      when more than half of its samples were too old, because then the
//                            clock may be wrong rather than the samples old,
//   history.json.changed     when another program has put other samples there since.
// Of each kind one is kept: the newest that is not much smaller. Main thread only.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "battery/BatteryState.h"
#include "history/DaySummary.h"
#include "history/Sample.h"
#include "platform/FileManager.h"
#include "values/Date.h"

namespace tollbeam {

class HistoryStore {
 public:
  /// Where the file belongs; absent when the user has no folder for application data.
  [[nodiscard]] static std::optional<std::string> folder(const FileManager& files);

  /// Loads "Tollbeam/history.json" of the user's application support. Stops the process when the
  /// user has no such folder at all.
  HistoryStore(FileManager& files, Date now);
  HistoryStore(const HistoryStore&) = delete;
  HistoryStore& operator=(const HistoryStore&) = delete;

  /// Appends a sample of `state` when percent, charging or external power moved, or when forced;
  /// nothing without a battery. Saves at once when charging or external power changed, otherwise
  /// when the last save is more than 300 seconds ago.
  void record(const BatteryState& state, Date at, bool force);

  /// Writes the file, whether or not anything changed, and makes its folder again where needed.
  void save(Date now);

  /// Forgets all samples and removes the old files that were kept. The next save replaces the file
  /// itself, even if another program wrote it.
  void removeAll();

  /// The wall clock was set by `step` seconds, to `now`: the last save, and the samples recorded
  /// since the load, are as long ago as before.
  void followClock(double step, Date now);

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
  void load(Date now);
  void prune(Date now);
  /// The suffix under which the file must be kept before it is replaced; empty when the samples
  /// here cover it.
  [[nodiscard]] std::string suffixToKeep() const;

  FileManager& files_;
  std::vector<Sample> samples_;
  /// How many of them, at the end, were recorded since the load.
  std::ptrdiff_t recorded_ = 0;
  std::string folder_;
  std::string url_;
  Date lastSave_ = Date::distantPast();
  /// The file at the load or at `removeAll`; absent after a save.
  std::optional<FileVersion> version_;
  std::size_t textHash_ = 0;
  /// The suffix for samples of that file that are not held here; empty when there are none.
  std::string lostSuffix_;
};

}  // namespace tollbeam
