#include "platform/freedesktop/power/readings/DaemonSilence.h"

namespace tollbeam {

void DaemonSilence::compare(bool contradicts, Time now) {
  if (silent_) return;
  if (!contradicts) {
    since_.reset();
    asked_.reset();
  } else if (!since_) {
    since_ = now;
  }
  silent_ = asked_ && now - *asked_ >= patience_.answer;
}

std::optional<DaemonSilence::Time> DaemonSilence::due() const {
  if (silent_ || !since_) return std::nullopt;
  return asked_ ? *asked_ + patience_.answer : *since_ + patience_.polling;
}

bool DaemonSilence::review(Time now) {
  if (silent_ || !since_ || asked_ || now - *since_ < patience_.polling) return false;
  asked_ = now;
  return true;
}

}  // namespace tollbeam
