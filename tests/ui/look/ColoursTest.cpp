#include "ui/look/Colours.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "colour/Contrast.h"

namespace tollbeam {
namespace {

QPalette palette(QRgb window, QRgb text, QRgb base, QRgb highlight, QRgb highlightedText) {
  QPalette p;
  p.setColor(QPalette::Window, window);
  p.setColor(QPalette::WindowText, text);
  p.setColor(QPalette::Base, base);
  p.setColor(QPalette::Highlight, highlight);
  p.setColor(QPalette::HighlightedText, highlightedText);
  return p;
}

const QPalette kLight = palette(0xFFF4F5F7, 0xFF1B1E23, 0xFFFFFFFF, 0xFF2F6CDB, 0xFFFFFFFF);
const QPalette kDark = palette(0xFF22252A, 0xFFECEEF1, 0xFF2C3036, 0xFF5B90F2, 0xFFFFFFFF);

TEST(Colours, DetectADarkPalette) {
  EXPECT_FALSE(coloursOf(kLight, false).dark);
  EXPECT_TRUE(coloursOf(kDark, false).dark);
}

TEST(Colours, KeepGreenOrangeAndRedOnCommonBackgrounds) {
  const Colours light = coloursOf(kLight, false);
  EXPECT_EQ(light.greenText.name().toStdString(), "#177a3c");
  EXPECT_EQ(light.orange.name().toStdString(), "#d0740a");
  const Colours dark = coloursOf(kDark, false);
  EXPECT_EQ(dark.redText.name().toStdString(), "#ff8a80");
  EXPECT_EQ(dark.green.name().toStdString(), "#45c06e");
}

TEST(Colours, UseTheUsersAccentColour) {
  EXPECT_EQ(coloursOf(kLight, false).accent.name().toStdString(), "#2f6cdb");
  EXPECT_EQ(coloursOf(kLight, false).onAccent, QColor(Qt::white));
  EXPECT_EQ(coloursOf(kDark, false).onAccent.name().toStdString(), "#0e1116");
}

TEST(Colours, DistinguishCardsWhereBaseAndWindowAreEqual) {
  const QPalette flat = palette(0xFFFFFFFF, 0xFF202020, 0xFFFFFFFF, 0xFF2F6CDB, 0xFFFFFFFF);
  EXPECT_NE(coloursOf(flat, false).card, coloursOf(flat, false).surface);
}

TEST(Colours, FollowTheHighContrastSetting) {
  const Colours c = coloursOf(kLight, true);
  EXPECT_TRUE(c.highContrast);
  EXPECT_EQ(c.secondary, c.primary);
  EXPECT_EQ(c.outline, c.primary);
  EXPECT_GE(contrastRatio(c.greenText, c.surface), 7);
  EXPECT_FALSE(coloursOf(kLight, false).highContrast);
}

TEST(Colours, TreatABlackAndWhitePaletteAsHighContrast) {
  const QPalette p = palette(0xFF000000, 0xFFFFFFFF, 0xFF000000, 0xFF00FFFF, 0xFF000000);
  EXPECT_TRUE(coloursOf(p, false).highContrast);
}

TEST(Colours, AreReadableOnEveryReadablePalette) {
  std::mt19937 random(7);
  const auto channel = [&random] { return std::uniform_int_distribution(0, 255)(random); };
  const auto any = [&] { return qRgb(channel(), channel(), channel()); };
  int seen = 0;
  for (int i = 0; i < 20000; ++i) {
    const QRgb window = any();
    const QRgb text = any();
    if (contrastRatio(QColor(window), QColor(text)) < 7) continue;
    ++seen;
    const Colours c = coloursOf(palette(window, text, window, any(), any()), false);
    for (const Ink ink :
         {Ink::primary, Ink::secondary, Ink::link, Ink::green, Ink::orange, Ink::red}) {
      EXPECT_GE(contrastRatio(c.ink(ink), c.surface), 4.49) << static_cast<int>(ink);
    }
    const QColor banner = mixed(c.accent, c.surface, 0.12);
    EXPECT_GE(contrastRatio(c.link, banner),
              std::min(c.highContrast ? 6.99 : 5.49, contrastRatio(c.primary, banner) - 0.01));
    for (const QColor& graphics : {c.accent, c.green, c.orange, c.red}) {
      EXPECT_GE(contrastRatio(graphics, c.surface), 2.99);
    }
    // On an accent of medium brightness neither our dark text nor white has more contrast.
    EXPECT_GE(contrastRatio(c.onAccent, c.accent), 4.3);
  }
  EXPECT_GT(seen, 500);
}

}  // namespace
}  // namespace tollbeam
