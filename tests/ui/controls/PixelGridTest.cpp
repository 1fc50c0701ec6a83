#include "ui/controls/PixelGrid.h"

#include <gtest/gtest.h>

#include <QImage>
#include <cmath>

namespace tollbeam {
namespace {

// How far a number is from a whole one.
double off(double x) { return std::fabs(x - std::round(x)); }

TEST(PixelGrid, PutsLinesOnWholePixelsAtEveryScaleAndPlace) {
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    QImage image(1000, 1000, QImage::Format_ARGB32);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    painter.translate(16, 33);
    const PixelGrid grid(painter, 1);
    for (double at = 0; at < 40; at += 0.7) {
      const QRectF row = painter.deviceTransform().mapRect(grid.row(at, 0, 200));
      EXPECT_LT(off(row.top()), 1e-6);
      EXPECT_NEAR(row.height(), std::floor(scale), 1e-6);
      EXPECT_LT(std::fabs(row.center().y() - (33 + at) * scale), 0.51);
      const QRectF column = painter.deviceTransform().mapRect(grid.column(at, 0, 200));
      EXPECT_LT(off(column.left()), 1e-6);
      EXPECT_NEAR(column.width(), std::floor(scale), 1e-6);
    }
  }
}

TEST(PixelGrid, FillsExactlyItsPixels) {
  QImage image(50, 50, QImage::Format_ARGB32);
  image.fill(Qt::white);
  image.setDevicePixelRatio(1.25);
  QPainter painter(&image);
  painter.fillRect(PixelGrid(painter, 1).row(10.3, 0, 40), Qt::black);
  painter.end();
  int black = 0;
  for (int y = 0; y < image.height(); ++y) {
    const QRgb pixel = image.pixel(20, y);
    EXPECT_TRUE(pixel == qRgb(0, 0, 0) || pixel == qRgb(255, 255, 255)) << y;
    black += pixel == qRgb(0, 0, 0);
  }
  EXPECT_EQ(black, 1);
}

}  // namespace
}  // namespace tollbeam
