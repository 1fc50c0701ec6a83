#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "values/Message.h"

namespace tollbeam {

/// Minutes as people read them: "1 h 5 min", "2 h", "45 min". Never less than "1 min", so that zero
/// and negative counts read as "nearly there".
[[nodiscard]] inline Message formatMinutes(std::int64_t minutes) {
  if (minutes < 60) return {"%1 min", {std::to_string(std::max<std::int64_t>(minutes, 1))}};
  const std::string hours = std::to_string(minutes / 60);
  if (minutes % 60 == 0) return {"%1 h", {hours}};
  return {"%1 h %2 min", {hours, std::to_string(minutes % 60)}};
}

}  // namespace tollbeam
