// One entry of the history.
#pragma once

#include <cstdint>

namespace tollbeam {

struct Sample {
  double t = 0;        ///< seconds since 1970-01-01 UTC, with the fraction
  std::int64_t p = 0;  ///< charge in percent
  bool c = false;      ///< the battery was charging
  bool a = false;      ///< the machine was on external power

  friend bool operator==(const Sample&, const Sample&) = default;
};

}  // namespace tollbeam
