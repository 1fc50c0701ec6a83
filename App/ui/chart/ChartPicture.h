// A prepared drawing of the chart: grid, labels and line. It is replaced when its content changes,
// so that painting needs no computation.
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
  struct Content {
    std::vector<ChartPoint> points;
    Date from;
    Date now;
    bool hours = true;  ///< hours on the time axis, else days
  };

  ChartPicture() = default;

  /// Fills `area`. From right to left the values are on the left, but time still runs to the right.
  ChartPicture(Content content, const QRectF& area, Qt::LayoutDirection direction,
               const Style& style, const Calendar& calendar, const QLocale& locale);

  [[nodiscard]] const std::vector<ChartPoint>& points() const { return points_; }
  [[nodiscard]] const ChartFrame& frame() const { return frame_; }

  struct Extent {
    double top = 0;
    double bottom = 0;
  };
  /// The highest and the lowest point between two x; both the middle of the plot where there is
  /// none.
  [[nodiscard]] Extent extent(double left, double right) const;

  /// Paints what is inside `dirty`, to which the painter must be clipped.
  void paint(QPainter& painter, const Style& style, const QRegion& dirty) const;

 private:
  struct Label {
    QPointF start;  // on the baseline
    QRect box;
    QString text;
  };

  double placeBaseline(const std::vector<TimeLabel>& labels, const Style& style);
  void addLabel(const QString& text, QPointF start, const QFontMetricsF& metrics);

  void paintGrid(QPainter& painter, const Style& style) const;
  void paintLines(QPainter& painter, const Style& style, const QRegion& dirty) const;

  std::vector<ChartPoint> points_;
  QRectF area_;
  ChartFrame frame_;
  std::vector<double> rows_;
  std::vector<double> columns_;
  std::vector<Label> labels_;
  std::vector<QPolygonF> lines_;
};

}  // namespace tollbeam
