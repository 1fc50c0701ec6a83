#include "ui/controls/PixelGrid.h"

#include <algorithm>
#include <cmath>

namespace tollbeam {

namespace {

constexpr double kNearlyWhole = 0.01;

// Half a pixel always goes the same way, also left of zero.
double whole(double x) { return std::floor(x + 0.5); }

}  // namespace

PixelGrid::PixelGrid(const QPainter& painter, double thickness)
    : toDevice_(painter.deviceTransform()),
      pixels_(std::max(1.0, std::floor(thickness * toDevice_.m22() + kNearlyWhole))) {}

QRectF PixelGrid::row(double y, double left, double right) const {
  const double top = whole(toDevice_.map(QPointF(0, y)).y() - pixels_ / 2);
  return logical(whole(toDevice_.map(QPointF(left, 0)).x()), top,
                 whole(toDevice_.map(QPointF(right, 0)).x()), top + pixels_);
}

QRectF PixelGrid::column(double x, double top, double bottom) const {
  const double left = whole(toDevice_.map(QPointF(x, 0)).x() - pixels_ / 2);
  return logical(left, whole(toDevice_.map(QPointF(0, top)).y()), left + pixels_,
                 whole(toDevice_.map(QPointF(0, bottom)).y()));
}

QRectF PixelGrid::logical(double left, double top, double right, double bottom) const {
  return toDevice_.inverted().mapRect(QRectF(QPointF(left, top), QPointF(right, bottom)));
}

}  // namespace tollbeam
