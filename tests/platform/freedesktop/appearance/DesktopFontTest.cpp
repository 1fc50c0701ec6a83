#include "platform/freedesktop/appearance/DesktopFont.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace tollbeam {
namespace {

const QFont kUsual(QStringLiteral("Sans Serif"), 9);

QFont fontOf(const char* description, double scale = 1) {
  Look look;
  look.font = parseFontDescription(description);
  look.textScale = scale;
  return desktopFont(look, kUsual);
}

TEST(DesktopFont, IsTheUsualOneWithoutADescription) {
  EXPECT_EQ(desktopFont({}, kUsual), kUsual);
  EXPECT_EQ(fontOf(""), kUsual);
}

TEST(DesktopFont, HasFamilySizeAndStyleOfTheDescription) {
  const QFont font = fontOf("Noto Sans, Ubuntu Semi-Bold Italic 10.5");
  EXPECT_EQ(font.families(), (QStringList{QStringLiteral("Noto Sans"), QStringLiteral("Ubuntu")}));
  EXPECT_EQ(font.pointSizeF(), 10.5);
  EXPECT_EQ(font.weight(), QFont::DemiBold);
  EXPECT_TRUE(font.italic());
}

TEST(DesktopFont, KeepsTheUsualSizeAndFamilyWhereNoneIsGiven) {
  EXPECT_EQ(fontOf("Ubuntu").pointSizeF(), 9);
  EXPECT_EQ(fontOf("12").families(), kUsual.families());
}

TEST(DesktopFont, ScalesPointsAndPixels) {
  EXPECT_EQ(fontOf("Ubuntu 12", 1.25).pointSizeF(), 15);
  EXPECT_EQ(fontOf("Ubuntu 14px", 1.5).pixelSize(), 21);
  EXPECT_EQ(fontOf("Ubuntu", 2).pointSizeF(), 18);
}

}  // namespace
}  // namespace tollbeam
