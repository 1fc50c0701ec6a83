#include "platform/freedesktop/appearance/readings/ThemeName.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

TEST(ThemeName, DarkThemesSayIt) {
  for (const char* name : {"Adwaita-dark", "Adwaita:dark", "Greybird-dark", "Arc-Dark",
                           "Mint-Y-Dark-Aqua", "Yaru-blue-dark", "Materia-dark-compact", "dark"})
    EXPECT_TRUE(isDarkTheme(name)) << name;
}

TEST(ThemeName, OthersAreLight) {
  for (const char* name : {"", "Adwaita", "Greybird", "Arc-Darker", "Darkness", "HighContrast",
                           "Mint-Y-Aqua", "Adwaita-", ":"})
    EXPECT_FALSE(isDarkTheme(name)) << name;
}

TEST(ThemeName, HighContrast) {
  for (const char* name : {"HighContrast", "HighContrastInverse", "ContrastHigh", "highcontrast"})
    EXPECT_TRUE(isHighContrastTheme(name)) << name;
  EXPECT_TRUE(isDarkTheme("HighContrastInverse"));
  EXPECT_FALSE(isHighContrastTheme("Adwaita"));
  EXPECT_FALSE(isDarkTheme("Inverse"));
}

}  // namespace
}  // namespace tollbeam
