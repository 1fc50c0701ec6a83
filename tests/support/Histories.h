// Histories for tests and pictures: the corners of a line, joined by samples.
#pragma once

#include <cmath>
#include <vector>

#include "history/HistoryJson.h"
#include "recorded/RecordedPlatform.h"

namespace tollbeam::test {

struct Corner {
  double hours;  ///< since the origin
  double percent;
};

/// Samples along each stretch, charging where it rises; nothing between two stretches.
inline std::vector<Sample> samplesAlong(const std::vector<std::vector<Corner>>& stretches,
                                        Date origin, double minutesApart = 1) {
  std::vector<Sample> samples;
  const auto add = [&](double hours, double percent, bool charging) {
    samples.push_back({.t = origin.secondsSince1970 + hours * 3600,
                       .p = std::lround(percent),
                       .c = charging,
                       .a = charging});
  };
  for (const auto& stretch : stretches) {
    for (std::size_t i = 0; i + 1 < stretch.size(); ++i) {
      const Corner& one = stretch[i];
      const Corner& next = stretch[i + 1];
      for (int k = 0; one.hours + k * minutesApart / 60 < next.hours; ++k) {
        const double hours = one.hours + k * minutesApart / 60;
        const double share = (hours - one.hours) / (next.hours - one.hours);
        add(hours, one.percent + share * (next.percent - one.percent), next.percent > one.percent);
      }
    }
    add(stretch.back().hours, stretch.back().percent, false);
  }
  return samples;
}

/// As if an earlier run of the program had saved them.
inline void store(const std::vector<Sample>& samples, RecordedFileManager& files) {
  files.files["/support/Tollbeam/history.json"] = encodeSamples(samples).value();
}

}  // namespace tollbeam::test
