#include "battery/FormatMinutes.h"

#include <algorithm>

namespace tollbeam {

std::string formatMinutes(std::int64_t minutes) {
  if (minutes < 60) return std::to_string(std::max<std::int64_t>(minutes, 1)) + " min";
  const std::int64_t hours = minutes / 60;
  const std::int64_t rest = minutes % 60;
  std::string text = std::to_string(hours) + " h";
  if (rest != 0) text += " " + std::to_string(rest) + " min";
  return text;
}

}  // namespace tollbeam
