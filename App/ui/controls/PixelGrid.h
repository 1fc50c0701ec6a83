// Hairlines that stay sharp at every scale: each is moved to the device's nearest whole pixels,
// wherever its widget lies, and is a whole number of them thick.
#pragma once

#include <QPainter>
#include <QRectF>

namespace tollbeam {

class PixelGrid {
 public:
  /// For lines of `thickness` logical pixels, or a little less where those are no whole ones.
  PixelGrid(const QPainter& painter, double thickness);

  /// A line across, about `y`; to be filled without antialiasing.
  [[nodiscard]] QRectF row(double y, double left, double right) const;
  /// A line down, about `x`.
  [[nodiscard]] QRectF column(double x, double top, double bottom) const;

 private:
  [[nodiscard]] QRectF logical(double left, double top, double right, double bottom) const;

  QTransform toDevice_;
  double pixels_;
};

}  // namespace tollbeam
