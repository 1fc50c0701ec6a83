#include "history/ChartPoints.h"

#include <algorithm>

namespace tollbeam {

namespace {

constexpr std::size_t kEnoughPoints = 300;
constexpr double kSampleSpacing = 60;
constexpr double kLongestSilence = 900;

}  // namespace

std::vector<ChartPoint> chartPoints(std::span<const Sample> samples) {
  const std::size_t stride = std::max<std::size_t>(samples.size() / kEnoughPoints, 1);
  // Points further apart tolerate a longer silence between them.
  const double gap = static_cast<double>(stride) * kSampleSpacing + kLongestSilence;
  std::vector<ChartPoint> points;
  points.reserve(samples.size() / stride + 2);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    if (i % stride != 0 && i + 1 != samples.size()) continue;
    std::int64_t segment = 0;
    if (!points.empty()) {
      const ChartPoint& previous = points.back();
      segment = previous.seg + (Date{samples[i].t} - previous.date > gap ? 1 : 0);
    }
    points.push_back({.id = static_cast<std::int64_t>(i),
                      .date = Date{samples[i].t},
                      .pct = samples[i].p,
                      .seg = segment});
  }
  return points;
}

}  // namespace tollbeam
