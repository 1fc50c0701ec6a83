#include "platform/freedesktop/appearance/DesktopPalette.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "colour/Contrast.h"

namespace tollbeam {
namespace {

constexpr std::array kGroups{QPalette::Active, QPalette::Inactive, QPalette::Disabled};

Look lookWith(ColourScheme scheme, bool highContrast) {
  Look look;
  look.scheme = scheme;
  look.highContrast = highContrast;
  return look;
}

std::vector<Look> allLooks() {
  std::vector<Look> looks;
  for (const auto scheme : {ColourScheme::light, ColourScheme::dark}) {
    for (const bool high : {false, true}) looks.push_back(lookWith(scheme, high));
  }
  return looks;
}

QColor of(const QPalette& palette, QPalette::ColorRole role,
          QPalette::ColorGroup group = QPalette::Active) {
  return palette.color(group, role);
}

TEST(DesktopPalette, HasTheDesignedLightAndDarkColours) {
  const auto light = desktopPalette({});
  EXPECT_EQ(of(light, QPalette::Window), QColor(0xf4f5f7));
  EXPECT_EQ(of(light, QPalette::WindowText), QColor(0x1b1e23));
  EXPECT_EQ(of(light, QPalette::Base), QColor(0xffffff));
  EXPECT_EQ(of(light, QPalette::Highlight), QColor(0x2f6cdb));
  EXPECT_EQ(of(light, QPalette::HighlightedText), QColor(0xffffff));
  const auto dark = desktopPalette(lookWith(ColourScheme::dark, false));
  EXPECT_EQ(of(dark, QPalette::Window), QColor(0x22252a));
  EXPECT_EQ(of(dark, QPalette::WindowText), QColor(0xeceef1));
  EXPECT_EQ(of(dark, QPalette::Base), QColor(0x2c3036));
  EXPECT_EQ(of(dark, QPalette::Highlight), QColor(0x5b90f2));
  EXPECT_EQ(of(dark, QPalette::HighlightedText), QColor(0x0e1116));
}

TEST(DesktopPalette, IsBlackAndWhiteWithHighContrast) {
  const auto light = desktopPalette(lookWith(ColourScheme::light, true));
  EXPECT_EQ(of(light, QPalette::Window), QColor(Qt::white));
  EXPECT_EQ(of(light, QPalette::WindowText), QColor(Qt::black));
  const auto dark = desktopPalette(lookWith(ColourScheme::dark, true));
  EXPECT_EQ(of(dark, QPalette::Window), QColor(Qt::black));
  EXPECT_EQ(of(dark, QPalette::WindowText), QColor(Qt::white));
}

TEST(DesktopPalette, SetsEveryRoleOfEveryGroup) {
  for (const auto& look : allLooks()) {
    const auto palette = desktopPalette(look);
    for (const auto group : kGroups) {
      for (int role = 0; role < QPalette::NColorRoles; ++role) {
        const auto r = static_cast<QPalette::ColorRole>(role);
        EXPECT_TRUE(r == QPalette::NoRole || palette.isBrushSet(group, r)) << group << ' ' << role;
      }
    }
  }
}

TEST(DesktopPalette, KeepsTextReadableOnItsBackground) {
  for (const auto& look : allLooks()) {
    const auto palette = desktopPalette(look);
    const auto seen = [&](QPalette::ColorRole text, QPalette::ColorRole ground,
                          QPalette::ColorGroup group = QPalette::Active) {
      return contrastRatio(of(palette, text, group), of(palette, ground, group));
    };
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
      EXPECT_GE(seen(QPalette::WindowText, QPalette::Window, group), 7);
      EXPECT_GE(seen(QPalette::Text, QPalette::Base, group), 7);
      EXPECT_GE(seen(QPalette::Text, QPalette::AlternateBase, group), 7);
      EXPECT_GE(seen(QPalette::ButtonText, QPalette::Button, group), 7);
      EXPECT_GE(seen(QPalette::ToolTipText, QPalette::ToolTipBase, group), 7);
      EXPECT_GE(seen(QPalette::PlaceholderText, QPalette::Base, group), 4.5);
      EXPECT_GE(seen(QPalette::HighlightedText, QPalette::Highlight, group), 4.5);
      EXPECT_GE(seen(QPalette::Link, QPalette::Base, group), 4.5);
      EXPECT_GE(seen(QPalette::LinkVisited, QPalette::Base, group), 4.5);
    }
    EXPECT_GE(seen(QPalette::WindowText, QPalette::Window, QPalette::Disabled), 2);
    EXPECT_LT(seen(QPalette::WindowText, QPalette::Window, QPalette::Disabled),
              seen(QPalette::WindowText, QPalette::Window));
    if (look.highContrast) {
      EXPECT_GE(seen(QPalette::WindowText, QPalette::Window, QPalette::Disabled), 4.5);
      EXPECT_GE(seen(QPalette::Highlight, QPalette::Window), 7);
      EXPECT_GE(seen(QPalette::PlaceholderText, QPalette::Base), 7);
    }
  }
}

TEST(DesktopPalette, ReliefGoesFromLightToDark) {
  for (const auto& look : allLooks()) {
    const auto palette = desktopPalette(look);
    const std::array roles{QPalette::Light, QPalette::Midlight, QPalette::Button,
                           QPalette::Mid,   QPalette::Dark,     QPalette::Shadow};
    for (std::size_t i = 1; i < roles.size(); ++i)
      EXPECT_GE(of(palette, roles[i - 1]).lightness(), of(palette, roles[i]).lightness()) << i;
    EXPECT_GT(of(palette, QPalette::Light).lightness(), of(palette, QPalette::Shadow).lightness());
  }
}

TEST(DesktopPalette, HighlightsWithTheDesktopsAccent) {
  for (auto look : allLooks()) {
    look.accent = Accent{0.9, 0.2, 0.1};
    const auto highlight = of(desktopPalette(look), QPalette::Highlight);
    EXPECT_NEAR(highlight.hueF(), QColor::fromRgbF(0.9F, 0.2F, 0.1F).hueF(), 0.01);
    EXPECT_TRUE(look.highContrast || highlight.rgb() == QColor::fromRgbF(0.9F, 0.2F, 0.1F).rgb());
  }
}

TEST(DesktopPalette, KeepsTextReadableWithAnyAccent) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> part(0, 1);
  for (int round = 0; round < 500; ++round) {
    for (auto look : allLooks()) {
      look.accent = Accent{part(random), part(random), part(random)};
      const auto palette = desktopPalette(look);
      const double least = look.highContrast ? 7 : 4.5;
      EXPECT_GE(
          contrastRatio(of(palette, QPalette::HighlightedText), of(palette, QPalette::Highlight)),
          4.3);
      EXPECT_GE(contrastRatio(of(palette, QPalette::Link), of(palette, QPalette::Base)), least);
      EXPECT_GE(contrastRatio(of(palette, QPalette::LinkVisited), of(palette, QPalette::Base)),
                least);
    }
  }
}

}  // namespace
}  // namespace tollbeam
