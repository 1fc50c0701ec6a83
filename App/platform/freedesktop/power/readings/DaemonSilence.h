// Distinguishes a daemon that hangs from one that merely sees the battery differently. The kernel's
// values may differ from the daemon's last ones, because the daemon polls, rounds and guesses. When
// they have differed for longer than the daemon takes to poll the battery, the daemon is queried;
// one that does not answer counts as silent until it answers or sends a signal.
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

  /// To be called at each reading, with whether the kernel contradicts the daemon's last values.
  void compare(bool contradicts, Time now) {
    if (silent_) return;
    if (!contradicts) {
      since_.reset();
      asked_.reset();
    } else if (!since_) {
      since_ = now;
    }
    silent_ = asked_ && now - *asked_ >= patience_.answer;
  }

  /// To be called when the daemon answers or sends a signal.
  void heard() { *this = DaemonSilence(patience_); }

  /// The daemon hangs: its last values are out of date.
  [[nodiscard]] bool isSilent() const { return silent_; }

  /// The kernel has contradicted the daemon ever since its last answer or signal.
  [[nodiscard]] bool isInDoubt() const { return since_.has_value(); }

  /// When `review` or `compare` is to be called next; absent while there is no contradiction, and
  /// while the daemon is silent.
  [[nodiscard]] std::optional<Time> due() const {
    if (silent_ || !since_) return std::nullopt;
    return asked_ ? *asked_ + patience_.answer : *since_ + patience_.polling;
  }

  /// Whether the daemon is to be queried now. True once for each contradiction.
  [[nodiscard]] bool review(Time now) {
    if (silent_ || !since_ || asked_ || now - *since_ < patience_.polling) return false;
    asked_ = now;
    return true;
  }

 private:
  Patience patience_;
  std::optional<Time> since_;
  std::optional<Time> asked_;
  bool silent_ = false;
};

}  // namespace tollbeam
