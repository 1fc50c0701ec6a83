#include "ui/look/Style.h"

#include <gtest/gtest.h>

#include <QApplication>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class StyleTest : public testing::Test {
 protected:
  ~StyleTest() override { QApplication::setFont(usual); }

  const QFont usual = QApplication::font();
  RecordedAppearance appearance;
  Style style{appearance};
};

TEST_F(StyleTest, GrowsWithALargeFont) {
  QFont font(usual);
  font.setPixelSize(30);
  QApplication::setFont(font);
  EXPECT_DOUBLE_EQ(style.scale(), 2);
  EXPECT_EQ(style.px(100), 200);
}

TEST_F(StyleTest, StopsGrowingAtTheLargestFont) {
  QFont inPixels(usual);
  inPixels.setPixelSize(2000);
  QFont inPoints(usual);
  inPoints.setPointSizeF(1500);
  for (const QFont& font : {inPixels, inPoints}) {
    QApplication::setFont(font);
    EXPECT_LE(style.scale(), 5);
    EXPECT_NEAR(pixelSize(style.font(Role::body)), 15 * style.scale(), 1);
  }
}

}  // namespace
}  // namespace tollbeam
