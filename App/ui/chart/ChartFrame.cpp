#include "ui/chart/ChartFrame.h"

#include <algorithm>
#include <cmath>

namespace tollbeam {

namespace {

// In widths or heights of the plot. Keeps coordinates in a range that painters can handle.
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
  const auto placeOf = [&](std::size_t i) { return frame.x(points[i].date); };
  // Whether the line between a point and its neighbour passes under the pointer.
  const auto joins = [&](std::size_t i, std::size_t neighbour) {
    if (neighbour >= points.size() || points[neighbour].seg != points[i].seg) return false;
    const double here = placeOf(i);
    const double there = placeOf(neighbour);
    return std::min(here, there) <= x && x <= std::max(here, there);
  };
  std::optional<std::size_t> nearest;
  double shortest = 0;
  // Points are in the order in which they were recorded. After the clock was set back their line
  // runs back over itself, so all must be compared. Of equally near points the last one is taken.
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double at = placeOf(i);
    if (at < frame.plot.left() || at > frame.plot.right()) continue;
    const double distance = std::fabs(at - x);
    if (nearest && distance > shortest) continue;
    if (distance > reach && !joins(i, i + 1) && !(i > 0 && joins(i, i - 1))) continue;
    nearest = i;
    shortest = distance;
  }
  return nearest;
}

}  // namespace tollbeam
