#include "platform/freedesktop/appearance/readings/Look.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tollbeam {
namespace {

Dictionary appearance(const char* key, Value value) {
  return {{"org.freedesktop.appearance", Dictionary{{key, std::move(value)}}}};
}

Dictionary gnome(Dictionary keys) { return {{"org.gnome.desktop.interface", std::move(keys)}}; }

ColourScheme schemeOf(const Dictionary& portal, const Dictionary& xsettings = {}) {
  return lookOf(portal, xsettings).scheme;
}

TEST(Look, HasDefaultsWithoutSettings) {
  EXPECT_EQ(lookOf({}, {}), Look());
  EXPECT_EQ(Look().scheme, ColourScheme::light);
  EXPECT_FALSE(Look().highContrast);
  EXPECT_TRUE(Look().animations);
}

TEST(Look, FollowsThePortalsColourScheme) {
  EXPECT_EQ(schemeOf(appearance("color-scheme", 1)), ColourScheme::dark);
  EXPECT_EQ(schemeOf(appearance("color-scheme", 2)), ColourScheme::light);
  EXPECT_EQ(schemeOf(appearance("color-scheme", 0)), ColourScheme::light);
  EXPECT_EQ(schemeOf(appearance("color-scheme", 17)), ColourScheme::light);
}

TEST(Look, FollowsGnomesOwnColourSchemeWhereThePortalHasNone) {
  EXPECT_EQ(schemeOf(gnome({{"color-scheme", "prefer-dark"}})), ColourScheme::dark);
  EXPECT_EQ(schemeOf(gnome({{"color-scheme", "prefer-light"}, {"gtk-theme", "Adwaita-dark"}})),
            ColourScheme::light);
  EXPECT_EQ(schemeOf(gnome({{"color-scheme", "default"}, {"gtk-theme", "Adwaita-dark"}})),
            ColourScheme::dark);
}

TEST(Look, FollowsTheThemeWithoutAPreference) {
  const Dictionary dark{{"Net/ThemeName", "Greybird-dark"}};
  EXPECT_EQ(schemeOf({}, dark), ColourScheme::dark);
  EXPECT_EQ(schemeOf(appearance("color-scheme", 0), dark), ColourScheme::dark);
  EXPECT_EQ(schemeOf(appearance("color-scheme", 2), dark), ColourScheme::light);
}

TEST(Look, PrefersTheSettingsDaemonsThemeToThePortals) {
  EXPECT_EQ(schemeOf(gnome({{"gtk-theme", "Adwaita-dark"}}), {{"Net/ThemeName", "Greybird"}}),
            ColourScheme::light);
  EXPECT_EQ(schemeOf(gnome({{"gtk-theme", "Adwaita-dark"}}), {{"Net/ThemeName", ""}}),
            ColourScheme::dark);
}

TEST(Look, IsDarkWithADarkTheme) {
  for (const char* name :
       {"Adwaita-dark", "Adwaita:dark", "Greybird-dark", "Arc-Dark", "Mint-Y-Dark-Aqua",
        "Yaru-blue-dark", "Materia-dark-compact", "dark", "HighContrastInverse"})
    EXPECT_EQ(schemeOf({}, {{"Net/ThemeName", name}}), ColourScheme::dark) << name;
}

TEST(Look, IsLightWithAnyOtherTheme) {
  for (const char* name : {"", "Adwaita", "Greybird", "Arc-Darker", "Darkness", "HighContrast",
                           "Mint-Y-Aqua", "Adwaita-", ":", "Inverse"})
    EXPECT_EQ(schemeOf({}, {{"Net/ThemeName", name}}), ColourScheme::light) << name;
}

TEST(Look, HasHighContrastWithAThemeOfThatName) {
  const auto highContrast = [](const char* name) {
    return lookOf({}, {{"Net/ThemeName", name}}).highContrast;
  };
  for (const char* name : {"HighContrast", "HighContrastInverse", "ContrastHigh", "highcontrast"})
    EXPECT_TRUE(highContrast(name)) << name;
  EXPECT_FALSE(highContrast("Adwaita"));
}

TEST(Look, HasHighContrastByAnyOfItsSettings) {
  EXPECT_TRUE(lookOf(appearance("contrast", 1), {}).highContrast);
  EXPECT_FALSE(lookOf(appearance("contrast", 0), {}).highContrast);
  EXPECT_FALSE(lookOf(appearance("contrast", 2), {}).highContrast);
  EXPECT_TRUE(
      lookOf({{"org.gnome.desktop.a11y.interface", Dictionary{{"high-contrast", true}}}}, {})
          .highContrast);
}

TEST(Look, HasNoAnimationsByAnyOfTheirSettings) {
  EXPECT_FALSE(lookOf({}, {{"Gtk/EnableAnimations", 0}}).animations);
  EXPECT_TRUE(lookOf({}, {{"Gtk/EnableAnimations", 1}}).animations);
  EXPECT_FALSE(lookOf(gnome({{"enable-animations", false}}), {}).animations);
  EXPECT_FALSE(
      lookOf(gnome({{"enable-animations", false}}), {{"Gtk/EnableAnimations", 1}}).animations);
  EXPECT_TRUE(lookOf(gnome({{"enable-animations", true}}), {}).animations);
  EXPECT_FALSE(lookOf(appearance("reduced-motion", 1), {}).animations);
  const auto kde = [](Value factor) {
    return Dictionary{
        {"org.kde.kdeglobals.KDE", Dictionary{{"AnimationDurationFactor", std::move(factor)}}}};
  };
  EXPECT_FALSE(lookOf(kde("0"), {}).animations);
  EXPECT_FALSE(lookOf(kde("0.0"), {}).animations);
  EXPECT_TRUE(lookOf(kde("0.5"), {}).animations);
  EXPECT_TRUE(lookOf(kde("none"), {}).animations);
}

TEST(Look, TakesAnAccentOfThreeNumbersFromZeroToOne) {
  const auto accent = [](List list) {
    return lookOf(appearance("accent-color", std::move(list)), {}).accent;
  };
  EXPECT_EQ(accent({0.5, 0.0, 1.0}), (Accent{0.5, 0, 1}));
  EXPECT_FALSE(accent({-1.0, -1.0, -1.0}));
  EXPECT_FALSE(accent({0.5, 0.5, 1.01}));
  EXPECT_FALSE(accent({0.5, 0.5, std::nan("")}));
  EXPECT_FALSE(accent({0.5, 0.5, std::numeric_limits<double>::infinity()}));
  EXPECT_FALSE(accent({0.5, 0.5}));
  EXPECT_FALSE(accent({0.5, 0.5, "red"}));
}

TEST(Look, TakesThePortalsFontAndTextScale) {
  const auto look =
      lookOf(gnome({{"font-name", "Cantarell 11"}, {"text-scaling-factor", 1.25}}), {});
  EXPECT_EQ(look.font, parseFontDescription("Cantarell 11"));
  EXPECT_EQ(look.textScale, 1.25);
}

// The daemon has raised the dots per inch already, and Qt follows that.
TEST(Look, DoesNotScaleTextWithASettingsDaemon) {
  const auto look = lookOf(gnome({{"font-name", "Cantarell 11"}, {"text-scaling-factor", 1.25}}),
                           {{"Gtk/FontName", "Cantarell 11"}, {"Xft/DPI", 122880}});
  EXPECT_EQ(look.textScale, 1);
}

TEST(Look, PrefersTheSettingsDaemonsFontToThePortals) {
  const auto look = lookOf(gnome({{"font-name", "Cantarell 11"}}), {{"Gtk/FontName", "Sans 10"}});
  EXPECT_EQ(look.font, parseFontDescription("Sans 10"));
}

TEST(Look, LimitsTheTextScale) {
  const auto scale = [](Value factor) {
    return lookOf(gnome({{"text-scaling-factor", std::move(factor)}}), {}).textScale;
  };
  EXPECT_EQ(scale(1.5), 1.5);
  EXPECT_EQ(scale(2), 2);
  EXPECT_EQ(scale(100.0), 3);
  EXPECT_EQ(scale(0.01), 0.5);
  EXPECT_EQ(scale(0.0), 1);
  EXPECT_EQ(scale(-2.0), 1);
  EXPECT_EQ(scale(std::nan("")), 1);
}

TEST(Look, IgnoresValuesOfTheWrongKind) {
  const Dictionary portal{{"org.freedesktop.appearance", Dictionary{{"color-scheme", "1"},
                                                                    {"contrast", true},
                                                                    {"accent-color", "red"},
                                                                    {"reduced-motion", 1.0}}},
                          {"org.gnome.desktop.interface", Dictionary{{"font-name", 11},
                                                                     {"text-scaling-factor", "2"},
                                                                     {"enable-animations", 0},
                                                                     {"color-scheme", 1},
                                                                     {"gtk-theme", List{}}}},
                          {"org.gnome.desktop.a11y.interface", Dictionary{{"high-contrast", 1}}},
                          {"org.kde.kdeglobals.KDE", Dictionary{{"AnimationDurationFactor", 0}}}};
  const Dictionary xsettings{
      {"Net/ThemeName", 1}, {"Gtk/FontName", 10}, {"Gtk/EnableAnimations", "0"}};
  EXPECT_EQ(lookOf(portal, xsettings), Look());
  EXPECT_EQ(lookOf({{"org.freedesktop.appearance", 1}}, {}), Look());
}

}  // namespace
}  // namespace tollbeam
