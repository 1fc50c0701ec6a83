// The chart as it is painted: grid, labels and line. Made anew when what it shows changes; painting
// it computes nothing.
#pragma once

#include <QPainter>
#include <QPolygonF>
#include <vector>

#include "history/ChartPoints.h"
#include "ui/ChartAxis.h"
#include "ui/ChartFrame.h"
#include "ui/look/Style.h"

namespace tollbeam {

class ChartPicture {
 public:
  /// What it shows, and for whom.
  struct Content {
    std::vector<ChartPoint> points;
    Date from;
    Date now;
    bool hours = true;  ///< hours on the time axis, else days
  };

  ChartPicture() = default;

  /// In `area`. Mirrored, the values stand on the left; time runs from left to right all the same.
  ChartPicture(Content content, const QRectF& area, Qt::LayoutDirection direction,
               const Style& style, const Calendar& calendar, const QLocale& locale);

  [[nodiscard]] const std::vector<ChartPoint>& points() const { return points_; }
  [[nodiscard]] const ChartFrame& frame() const { return frame_; }

  /// As much of it as the painter's clip lets through.
  void paint(QPainter& painter, const Style& style) const;

 private:
  struct Label {
    QPointF start;  // on the baseline
    QString text;
  };

  void paintGrid(QPainter& painter, const Style& style) const;
  void paintLines(QPainter& painter, const Style& style) const;

  std::vector<ChartPoint> points_;
  ChartFrame frame_;
  double right_ = 0;
  std::vector<double> rows_;
  std::vector<double> columns_;
  std::vector<Label> labels_;
  std::vector<QPolygonF> lines_;
};

}  // namespace tollbeam
