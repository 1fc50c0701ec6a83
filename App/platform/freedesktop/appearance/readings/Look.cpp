#include "platform/freedesktop/appearance/readings/Look.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

#include "platform/freedesktop/appearance/readings/ThemeName.h"

namespace tollbeam {
namespace {

constexpr double kSmallestText = 0.5;
constexpr double kLargestText = 3;

const Value* setting(const Dictionary& portal, std::string_view group, std::string_view key) {
  const Value* settings = find(portal, group);
  const Dictionary* keys = settings != nullptr ? settings->dictionary() : nullptr;
  return keys != nullptr ? find(*keys, key) : nullptr;
}

const Value* appearance(const Dictionary& portal, std::string_view key) {
  return setting(portal, "org.freedesktop.appearance", key);
}

const Value* gnome(const Dictionary& portal, std::string_view key) {
  return setting(portal, "org.gnome.desktop.interface", key);
}

bool isNumber(const Value* value, std::int64_t number) {
  return value != nullptr && value->isIntegral() && value->integer() == number;
}

bool isFlag(const Value* value, bool flag) { return value != nullptr && value->flag() == flag; }

std::string_view textOf(const Value* value) {
  const std::string* text = value != nullptr ? value->text() : nullptr;
  return text != nullptr ? std::string_view(*text) : std::string_view();
}

/// The GTK theme; empty when nobody names one.
std::string_view themeOf(const Dictionary& portal, const Dictionary& xsettings) {
  const auto daemon = textOf(find(xsettings, "Net/ThemeName"));
  return daemon.empty() ? textOf(gnome(portal, "gtk-theme")) : daemon;
}

// A preference comes first: a theme may be dark without saying so. GNOME's own word for it is older
// than the portal's.
ColourScheme schemeOf(const Dictionary& portal, std::string_view theme) {
  const Value* preference = appearance(portal, "color-scheme");
  if (isNumber(preference, 1)) return ColourScheme::dark;
  if (isNumber(preference, 2)) return ColourScheme::light;
  const auto ofGnome = textOf(gnome(portal, "color-scheme"));
  if (ofGnome == "prefer-dark") return ColourScheme::dark;
  if (ofGnome == "prefer-light") return ColourScheme::light;
  return isDarkTheme(theme) ? ColourScheme::dark : ColourScheme::light;
}

bool highContrastOf(const Dictionary& portal, std::string_view theme) {
  return isNumber(appearance(portal, "contrast"), 1) ||
         isFlag(setting(portal, "org.gnome.desktop.a11y.interface", "high-contrast"), true) ||
         isHighContrastTheme(theme);
}

// KDE gives its numbers as texts.
bool isZero(const Value* value) {
  const auto text = textOf(value);
  if (text.empty()) return false;
  double number = 1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number == 0;
}

// Whoever asks for stillness gets it, whatever the others say.
bool animationsOf(const Dictionary& portal, const Dictionary& xsettings) {
  return !isNumber(find(xsettings, "Gtk/EnableAnimations"), 0) &&
         !isFlag(gnome(portal, "enable-animations"), false) &&
         !isNumber(appearance(portal, "reduced-motion"), 1) &&
         !isZero(setting(portal, "org.kde.kdeglobals.KDE", "AnimationDurationFactor"));
}

std::optional<Accent> accentOf(const Value* value) {
  const List* list = value != nullptr ? value->list() : nullptr;
  if (list == nullptr || list->size() != 3) return std::nullopt;
  const auto part = [list](std::size_t i) { return (*list)[i].number().value_or(-1); };
  const Accent accent{part(0), part(1), part(2)};
  for (const double p : {accent.red, accent.green, accent.blue}) {
    // The portal's way of saying that there is none. Written so that NaN is none, too.
    if (!(p >= 0 && p <= 1)) return std::nullopt;
  }
  return accent;
}

double textScaleOf(const Value* value) {
  const auto factor = value != nullptr ? value->number() : std::nullopt;
  if (!factor || !(*factor > 0)) return 1;
  return std::clamp(*factor, kSmallestText, kLargestText);
}

}  // namespace

Look lookOf(const Dictionary& portal, const Dictionary& xsettings) {
  const auto theme = themeOf(portal, xsettings);
  Look look;
  look.scheme = schemeOf(portal, theme);
  look.highContrast = highContrastOf(portal, theme);
  look.animations = animationsOf(portal, xsettings);
  look.accent = accentOf(appearance(portal, "accent-color"));
  // A portal answers with GNOME's settings wherever GNOME's libraries are; a settings daemon knows
  // its own desktop. It also turns larger text into more dots to the inch, which Qt follows: to
  // scale the font as well would count it twice.
  auto font = textOf(find(xsettings, "Gtk/FontName"));
  if (font.empty()) font = textOf(gnome(portal, "font-name"));
  if (!font.empty()) look.font = parseFontDescription(font);
  if (xsettings.empty()) look.textScale = textScaleOf(gnome(portal, "text-scaling-factor"));
  return look;
}

}  // namespace tollbeam
