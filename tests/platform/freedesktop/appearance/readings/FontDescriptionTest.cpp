#include "platform/freedesktop/appearance/readings/FontDescription.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

using Families = std::vector<std::string>;

TEST(FontDescription, HasFamilyAndSize) {
  const auto font = parseFontDescription("Cantarell 11");
  EXPECT_EQ(font.families, Families{"Cantarell"});
  EXPECT_EQ(font.size, 11);
  EXPECT_FALSE(font.sizeIsPixels);
  EXPECT_EQ(font.weight, 400);
  EXPECT_FALSE(font.italic);
}

TEST(FontDescription, TakesAFamilyOfSeveralWords) {
  EXPECT_EQ(parseFontDescription("Noto Sans Display 10.5").families, Families{"Noto Sans Display"});
  EXPECT_EQ(parseFontDescription("Noto Sans Display 10.5").size, 10.5);
}

TEST(FontDescription, TakesWordsOfStyleBeforeTheSize) {
  const auto font = parseFontDescription("DejaVu Sans Bold Oblique Condensed 9");
  EXPECT_EQ(font.families, Families{"DejaVu Sans"});
  EXPECT_EQ(font.weight, 700);
  EXPECT_TRUE(font.italic);
  EXPECT_EQ(font.stretch, 75);
}

TEST(FontDescription, TakesWordsOfStyleInAnySpelling) {
  EXPECT_EQ(parseFontDescription("Inter Semi-Bold 10").weight, 600);
  EXPECT_EQ(parseFontDescription("Inter semibold 10").weight, 600);
  EXPECT_EQ(parseFontDescription("Inter MEDIUM 10").weight, 500);
  EXPECT_EQ(parseFontDescription("Inter Regular 10").weight, 400);
}

TEST(FontDescription, TakesWordsOfStyleWithoutASize) {
  const auto font = parseFontDescription("Sans Italic");
  EXPECT_EQ(font.families, Families{"Sans"});
  EXPECT_TRUE(font.italic);
  EXPECT_FALSE(font.size);
}

TEST(FontDescription, KeepsAWordOfStyleInsideTheFamily) {
  EXPECT_EQ(parseFontDescription("Black Ops One 12").families, Families{"Black Ops One"});
}

TEST(FontDescription, EndsTheFamilyAtAComma) {
  const auto font = parseFontDescription("Arial Black, 12");
  EXPECT_EQ(font.families, Families{"Arial Black"});
  EXPECT_EQ(font.weight, 400);
  EXPECT_EQ(parseFontDescription("Noto Sans,  10").size, 10);
}

TEST(FontDescription, KeepsTheOrderOfFamilies) {
  EXPECT_EQ(parseFontDescription("Ubuntu, Noto Sans,Sans 10").families,
            (Families{"Ubuntu", "Noto Sans", "Sans"}));
}

TEST(FontDescription, DistinguishesPixelsFromPoints) {
  const auto font = parseFontDescription("Sans 14px");
  EXPECT_EQ(font.size, 14);
  EXPECT_TRUE(font.sizeIsPixels);
}

TEST(FontDescription, IgnoresVariationsAndFeatures) {
  const auto font = parseFontDescription("Inter Variable 11 @wght=450 #tnum=1");
  EXPECT_EQ(font.families, Families{"Inter Variable"});
  EXPECT_EQ(font.size, 11);
}

TEST(FontDescription, IgnoresSizesOutOfRange) {
  for (const char* text : {"Sans 0", "Sans -3", "Sans 100000", "Sans 0px"}) {
    EXPECT_FALSE(parseFontDescription(text).size) << text;
    EXPECT_EQ(parseFontDescription(text).families, Families{"Sans"}) << text;
  }
}

TEST(FontDescription, AcceptsAnyText) {
  EXPECT_TRUE(parseFontDescription("").families.empty());
  EXPECT_TRUE(parseFontDescription("  \t ").families.empty());
  EXPECT_TRUE(parseFontDescription(" , ,").families.empty());
  EXPECT_TRUE(parseFontDescription("@@ #").families.empty());
  EXPECT_EQ(parseFontDescription("12").size, 12);
  EXPECT_TRUE(parseFontDescription("12").families.empty());
  EXPECT_EQ(parseFontDescription("Bold 12").weight, 700);
  EXPECT_EQ(parseFontDescription("px").families, Families{"px"});
  EXPECT_EQ(parseFontDescription("  Sans   8 ").families, Families{"Sans"});
}

}  // namespace
}  // namespace tollbeam
