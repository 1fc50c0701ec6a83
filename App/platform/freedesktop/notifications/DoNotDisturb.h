// Whether the user has switched on "do not disturb". There is no common way to ask, so the ways of
// the servers that play no sounds themselves are tried in turn: the Inhibited property of Plasma
// and others, dunst's pause, and Xfce's setting. GNOME's server is not asked: it plays the sounds.
#pragma once

#include <QObject>
#include <chrono>
#include <functional>

#include "platform/freedesktop/bus/Bus.h"

namespace tollbeam {

/// Calls `answer` once, never before this returns; not at all when `context` has gone by then. Off
/// where a server does not answer within `patience`. Never blocks, and starts no service. `bus` is
/// the session bus and outlives `context`. Main thread only.
void askDoNotDisturb(const Bus& bus, QObject* context, std::function<void(bool on)> answer,
                     std::chrono::milliseconds patience = std::chrono::milliseconds(500));

}  // namespace tollbeam
