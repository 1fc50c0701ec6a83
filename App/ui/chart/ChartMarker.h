// Marks the value under the pointer: a line down the plot, a dot on the chart's line and a small
// label with time and percent. Its region covers only these, so that it is repainted cheaply.
#pragma once

#include <QPainter>
#include <QRegion>

#include "ui/chart/ChartPicture.h"
#include "ui/look/Style.h"

namespace tollbeam {

class ChartMarker {
 public:
  /// For a point of the picture that is inside its plot. `time` and `percent` are the label's
  /// texts.
  ChartMarker(const ChartPicture& picture, std::size_t point, QString time, QString percent,
              const Style& style, Qt::LayoutDirection direction);

  /// All that `paint` may paint.
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
