// The chart as it is painted: grid, labels and line. Made anew when what it shows changes; painting
// it computes nothing.
#pragma once

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>
#include <QRegion>
#include <vector>

#include "history/ChartPoints.h"
#include "ui/chart/ChartAxis.h"
#include "ui/chart/ChartFrame.h"
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

  struct Extent {
    double top = 0;
    double bottom = 0;
  };
  /// From how high to how low the points between two places reach; a level of no height at the
  /// plot's middle when there are none.
  [[nodiscard]] Extent extent(double left, double right) const;

  /// What of it lies in `dirty`, to which the painter is clipped.
  void paint(QPainter& painter, const Style& style, const QRegion& dirty) const;

 private:
  struct Label {
    QPointF start;  // on the baseline
    QRect box;
    QString text;
  };

  double makeRoomFor(const std::vector<TimeLabel>& labels, const Style& style);
  void addRows(const QFontMetricsF& metrics);
  void put(QString text, QPointF start, const QFontMetricsF& metrics);

  void paintGrid(QPainter& painter, const Style& style) const;
  void paintLines(QPainter& painter, const Style& style, const QRegion& dirty) const;

  std::vector<ChartPoint> points_;
  QRectF area_;
  bool mirrored_ = false;
  ChartFrame frame_;
  std::vector<double> rows_;
  std::vector<double> columns_;
  std::vector<Label> labels_;
  std::vector<QPolygonF> lines_;
};

}  // namespace tollbeam
