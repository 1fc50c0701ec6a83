#include "ui/controls/Bar.h"

#include <gtest/gtest.h>

#include <QImage>
#include <limits>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class BarTest : public testing::Test {
 protected:
  BarTest() { bar.resize(200, 6); }

  QRgb at(int x) {
    QImage image(bar.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    bar.render(&image, {}, {}, {});
    return image.pixel(x, 3);
  }

  RecordedAppearance appearance;
  Style style{appearance};
  Bar bar{style, QStringLiteral("Cycle count"), 1000};
};

TEST_F(BarTest, FillsFromTheLeft) {
  bar.setFilled(500, Tint::orange);
  EXPECT_EQ(at(50), style.colours().orange.rgb());
  EXPECT_NE(at(150), style.colours().orange.rgb());
}

TEST_F(BarTest, FillsFromTheRightInAMirroredWindow) {
  bar.setLayoutDirection(Qt::RightToLeft);
  bar.setFilled(500, Tint::orange);
  EXPECT_NE(at(50), style.colours().orange.rgb());
  EXPECT_EQ(at(150), style.colours().orange.rgb());
}

TEST_F(BarTest, ClampsValuesBeyondItsRange) {
  bar.setFilled(std::numeric_limits<std::int64_t>::max(), Tint::red);
  EXPECT_EQ(bar.value(), 1000);
  EXPECT_EQ(at(196), style.colours().red.rgb());
  bar.setFilled(-1, Tint::red);
  EXPECT_EQ(bar.value(), 0);
  EXPECT_NE(at(3), style.colours().red.rgb());
}

TEST_F(BarTest, IsOutlinedWhenTheUserAskedForContrast) {
  appearance.contrast = true;
  appearance.changes.notify();
  QImage image(bar.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  bar.render(&image, {}, {}, {});
  EXPECT_EQ(image.pixel(100, 0), style.colours().primary.rgb());
}

}  // namespace
}  // namespace tollbeam
