// The value under the pointer: a line down the plot, a dot on the chart's line and a small label
// with time and percent. It covers no more than that, so that following the pointer is cheap.
#pragma once

#include <QPainter>
#include <QRegion>

#include "ui/chart/ChartPicture.h"
#include "ui/look/Style.h"

namespace tollbeam {

class ChartMarker {
 public:
  /// For one of the picture's points, which lies in its plot; `time` and `percent` as they are to
  /// be read.
  ChartMarker(const ChartPicture& picture, std::size_t point, QString time, QString percent,
              const Style& style, Qt::LayoutDirection direction);

  /// Everything that it paints.
  [[nodiscard]] const QRegion& region() const { return region_; }
  [[nodiscard]] const QString& time() const { return time_; }
  [[nodiscard]] const QString& percent() const { return percent_; }

  void paint(QPainter& painter, const Style& style) const;

 private:
  QPointF at_;
  QRectF plot_;
  QString time_;
  QString percent_;
  QRectF dot_;
  QRectF label_;
  QRegion region_;
  double timeStart_ = 0;
  double percentStart_ = 0;
};

}  // namespace tollbeam
