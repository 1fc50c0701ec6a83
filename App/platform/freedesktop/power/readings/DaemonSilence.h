// Tells a daemon that hangs from one that merely sees the battery differently. What the kernel says
// may differ from what the daemon last said: the daemon polls, rounds and guesses. When it has
// differed for longer than the daemon takes to poll the battery, the daemon is asked; one that
// hangs does not answer, and counts as silent until something is heard of it.
#pragma once

#include <chrono>
#include <optional>

namespace tollbeam {

class DaemonSilence {
 public:
  /// Since any fixed moment; never goes back.
  using Time = std::chrono::milliseconds;

  struct Patience {
    /// Older daemons poll every two minutes, newer ones every thirty seconds.
    Time polling = std::chrono::seconds(120);
    Time answer = std::chrono::seconds(10);
  };

  DaemonSilence() = default;
  explicit DaemonSilence(Patience patience) : patience_(patience) {}

  /// To be told at each reading whether the kernel contradicts the daemon's last word.
  void compare(bool contradicts, Time now);

  /// The daemon answered or signalled.
  void heard() { *this = DaemonSilence(patience_); }

  /// The daemon hangs: its last word is worth nothing.
  [[nodiscard]] bool isSilent() const { return silent_; }

  /// The kernel has contradicted the daemon ever since something was heard of it.
  [[nodiscard]] bool isInDoubt() const { return since_.has_value(); }

  /// When `review` is to be called; absent while nothing is to be done.
  [[nodiscard]] std::optional<Time> due() const;

  /// Whether the daemon is to be asked now.
  [[nodiscard]] bool review(Time now);

 private:
  Patience patience_;
  std::optional<Time> since_;
  std::optional<Time> asked_;
  bool silent_ = false;
};

}  // namespace tollbeam
