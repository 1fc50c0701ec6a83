// A recording of a laptop: what the power sources reported at which time, and what the user and the
// machine did. Text, one JSON object per line in the order of time:
//
//   {"t": 1763712000, "table": [{"Type": "InternalBattery", …}], "smartBattery": {…},
//    "lowPowerMode": false, "set": {"limit": 75}, "do": "event"}
//
// Only "t" (seconds since 1970) is needed. "table" and "smartBattery" replace the earlier ones,
// null makes them absent; "set" stores preferences; "do" is one of "event" (the power sources call
// back), "powerState" (Low Power Mode was switched), "willSleep", "didWake", "snooze" (a tap on the
// notification's button), "openPopover" or "quit".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "values/Date.h"
#include "values/Value.h"

namespace tollbeam {

struct TraceStep {
  Date at;
  /// Present when the line has the key; an absent value inside: unreadable from now on.
  std::optional<std::optional<List>> table;
  std::optional<std::optional<Dictionary>> smartBattery;
  std::optional<bool> lowPowerMode;
  Dictionary set;
  std::string action;
};

/// The steps; absent when a line is damaged, lacks its time, or goes back in time.
[[nodiscard]] std::optional<std::vector<TraceStep>> readTrace(std::string_view text);

}  // namespace tollbeam
