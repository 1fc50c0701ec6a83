// Whether notifications are to leave the user alone now. There is no common way to ask, so the ways
// of the servers that play no sounds themselves are tried in turn: the Inhibited property of Plasma
// and others, dunst's pause, and Xfce's setting. GNOME's server is not asked: it plays the sounds.
// Nothing here waits for the bus, and nothing is started to be asked. Main thread only.
#pragma once

#include <QObject>
#include <chrono>
#include <cstddef>
#include <functional>

#include "platform/freedesktop/bus/Bus.h"

namespace tollbeam {

class DoNotDisturb final : public QObject {
 public:
  /// `sessionBus` outlives this object. A server that does not answer within `patience` has nothing
  /// against being disturbed.
  explicit DoNotDisturb(Bus& sessionBus,
                        std::chrono::milliseconds patience = std::chrono::milliseconds(500));

  /// Calls `answer` once, never before this returns; not at all when this object has gone.
  void ask(std::function<void(bool on)> answer);

 private:
  void askFrom(std::size_t question, std::function<void(bool on)> answer);

  const Bus& bus_;
  int patience_;
};

}  // namespace tollbeam
