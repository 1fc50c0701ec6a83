// Places the chart's points in its plot, and finds the one under the pointer.
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

  /// True when the range has no or a negative length.
  [[nodiscard]] bool isEmpty() const { return !(from < now); }

  /// From left to right. Instants far outside the range are placed a few plots away.
  [[nodiscard]] double x(Date instant) const;
  /// 0 is the bottom of the plot and 100 its top; bounded in the same way.
  [[nodiscard]] double y(std::int64_t percent) const;
  [[nodiscard]] QPointF at(const ChartPoint& point) const { return {x(point.date), y(point.pct)}; }
};

/// The point nearest to `x` whose line passes under `x` or that is at most `reach` away. Absent in
/// a gap; never a point outside the plot.
[[nodiscard]] std::optional<std::size_t> pointAt(double x, double reach,
                                                 std::span<const ChartPoint> points,
                                                 const ChartFrame& frame);

}  // namespace tollbeam
