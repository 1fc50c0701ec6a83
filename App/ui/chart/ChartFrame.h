// Where the chart's points lie in its plot, and which one is under the pointer.
#pragma once

#include <QRectF>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "history/ChartPoints.h"
#include "values/Date.h"

namespace tollbeam {

struct ChartFrame {
  QRectF plot;
  Date from;
  Date now;

  /// Whether there is no time to show: a range of no days, or of fewer.
  [[nodiscard]] bool isEmpty() const { return !(from < now); }

  /// Left to right. Instants far outside come to rest a few plots away.
  [[nodiscard]] double x(Date instant) const;
  /// 0 at the plot's bottom, 100 at its top; likewise.
  [[nodiscard]] double y(std::int64_t percent) const;
  [[nodiscard]] QPointF at(const ChartPoint& point) const { return {x(point.date), y(point.pct)}; }
};

/// The point nearest to `x` in the stretch that `x` is in, or at most `reach` beside; none over a
/// gap and none that lies outside the plot.
[[nodiscard]] std::optional<std::size_t> pointAt(double x, double reach,
                                                 std::span<const ChartPoint> points,
                                                 const ChartFrame& frame);

}  // namespace tollbeam
