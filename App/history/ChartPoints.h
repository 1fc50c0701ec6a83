// The history as a line to draw: thinned to a few hundred points and broken where nothing was
// recorded.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "history/Sample.h"
#include "values/Date.h"

namespace tollbeam {

struct ChartPoint {
  std::int64_t id = 0;   ///< index of its sample in the range
  Date date;             ///< the sample's time
  std::int64_t pct = 0;  ///< the sample's percent
  std::int64_t seg = 0;  ///< number of its unbroken stretch, from 0

  friend bool operator==(const ChartPoint&, const ChartPoint&) = default;
};

/// The points of a range of samples, in its order. Fewer than 600 samples are kept whole; the
/// newest is always kept.
[[nodiscard]] std::vector<ChartPoint> chartPoints(std::span<const Sample> samples);

}  // namespace tollbeam
