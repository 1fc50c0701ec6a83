#include "battery/FormatMinutes.h"

#include <algorithm>

namespace tollbeam {

Message formatMinutes(std::int64_t minutes) {
  if (minutes < 60) return {"%1 min", {std::to_string(std::max<std::int64_t>(minutes, 1))}};
  const std::string hours = std::to_string(minutes / 60);
  if (minutes % 60 == 0) return {"%1 h", {hours}};
  return {"%1 h %2 min", {hours, std::to_string(minutes % 60)}};
}

}  // namespace tollbeam
