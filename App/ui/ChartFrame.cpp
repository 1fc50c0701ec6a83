#include "ui/ChartFrame.h"

#include <algorithm>
#include <cmath>

namespace tollbeam {

namespace {

// Further out nothing is seen; painters dislike numbers without bounds.
constexpr double kFarthest = 4;

}  // namespace

double ChartFrame::x(Date instant) const {
  const double share = isEmpty() ? kFarthest : (instant - from) / (now - from);
  return plot.left() + plot.width() * std::clamp(share, -kFarthest, kFarthest);
}

double ChartFrame::y(std::int64_t percent) const {
  const double share = static_cast<double>(percent) / 100;
  return plot.bottom() - plot.height() * std::clamp(share, -kFarthest, kFarthest);
}

std::optional<std::size_t> pointAt(double x, double reach, std::span<const ChartPoint> points,
                                   const ChartFrame& frame) {
  if (frame.isEmpty()) return std::nullopt;
  std::optional<std::size_t> nearest;
  double shortest = 0;
  const auto consider = [&](std::size_t i) {
    const double at = frame.x(points[i].date);
    if (at < frame.plot.left() || at > frame.plot.right()) return;
    const double distance = std::fabs(at - x);
    if (nearest && distance >= shortest) return;
    nearest = i;
    shortest = distance;
  };
  // Points come in the order of time, so only the last one before and the first one after count.
  const auto after = static_cast<std::size_t>(
      std::partition_point(points.begin(), points.end(),
                           [&](const ChartPoint& p) { return frame.x(p.date) < x; }) -
      points.begin());
  const bool between = after > 0 && after < points.size();
  const bool within = between && points[after - 1].seg == points[after].seg;
  if (after > 0) consider(after - 1);
  if (after < points.size()) consider(after);
  if (nearest && !within && shortest > reach) return std::nullopt;
  return nearest;
}

}  // namespace tollbeam
