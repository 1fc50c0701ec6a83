#include "ui/look/Type.h"

#include <gtest/gtest.h>

#include <QFontInfo>

namespace tollbeam {
namespace {

QFont base(double points) {
  QFont font;
  font.setPointSizeF(points);
  return font;
}

TEST(Type, FindsTheBaseOfFontsInPixelsAndPoints) {
  QFont inPixels;
  inPixels.setPixelSize(16);
  EXPECT_DOUBLE_EQ(pixelSize(inPixels), 16);
  EXPECT_NEAR(pixelSize(base(10)) / pixelSize(base(20)), 0.5, 1e-9);
}

TEST(Type, IsAScaleOfTheBase) {
  const QFont font10 = base(10);
  const double b = pixelSize(font10);
  EXPECT_NEAR(pixelSize(font(Role::headline, font10)), b, 0.01);
  EXPECT_NEAR(pixelSize(font(Role::callout, font10)), 0.92 * b, 0.01);
  EXPECT_NEAR(pixelSize(font(Role::caption, font10)), 0.85 * b, 0.01);
  EXPECT_NEAR(pixelSize(font(Role::caption2, font10)), 0.77 * b, 0.01);
  EXPECT_EQ(font(Role::headline, font10).weight(), QFont::DemiBold);
  EXPECT_EQ(font(Role::body, font10).family(), font10.family());
}

TEST(Type, KeepsTheScaleUnderAFontGivenInPixels) {
  QFont inPixels;
  inPixels.setPixelSize(20);
  EXPECT_NEAR(pixelSize(font(Role::body, inPixels)), 20, 0.01);
  EXPECT_NEAR(pixelSize(font(Role::caption, inPixels)), 17, 0.3);
}

TEST(Type, IsAtLeastNinePixels) {
  QFont tiny;
  tiny.setPixelSize(8);
  EXPECT_NEAR(pixelSize(font(Role::caption2, tiny)), 9, 0.3);
}

TEST(Type, SetsTheRingIn28Pixels) {
  EXPECT_NEAR(pixelSize(ringFont(base(10), 1)), 28, 0.01);
  EXPECT_NEAR(pixelSize(ringFont(base(10), 1.5)), 42, 0.01);
}

}  // namespace
}  // namespace tollbeam
