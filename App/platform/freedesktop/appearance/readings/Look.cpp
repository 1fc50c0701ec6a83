#include "platform/freedesktop/appearance/readings/Look.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

namespace tollbeam {
namespace {

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

bool is(const Value* value, const Value& expected) {
  return value != nullptr && *value == expected;
}

std::string_view textOf(const Value* value) {
  const std::string* text = value != nullptr ? value->text() : nullptr;
  return text != nullptr ? std::string_view(*text) : std::string_view();
}

// The GTK theme's name in small letters; empty when there is none. There is no other way to know a
// theme's colours: the rest of it is a style sheet in a language of GTK's own.
std::string themeOf(const Dictionary& portal, const Dictionary& xsettings) {
  const auto daemon = textOf(find(xsettings, "Net/ThemeName"));
  std::string name(daemon.empty() ? textOf(gnome(portal, "gtk-theme")) : daemon);
  for (char& c : name) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return name;
}

// "HighContrast", "HighContrastInverse", and MATE's "ContrastHigh".
bool isHighContrastTheme(std::string_view name) {
  return name.starts_with("highcontrast") || name.starts_with("contrasthigh");
}

// "Adwaita-dark", "Adwaita:dark", "Mint-Y-Dark-Aqua", "HighContrastInverse", but not "Arc-Darker",
// which has only dark title bars.
bool isDarkTheme(std::string_view name) {
  if (isHighContrastTheme(name) && name.ends_with("inverse")) return true;
  while (!name.empty()) {
    const auto end = std::min(name.find_first_of("-_:. "), name.size());
    if (name.substr(0, end) == "dark") return true;
    name.remove_prefix(std::min(end + 1, name.size()));
  }
  return false;
}

// A preference comes first: a theme may be dark without a name that says so. GNOME's own key is
// older than the portal's.
ColourScheme schemeOf(const Dictionary& portal, std::string_view theme) {
  const Value* preference = appearance(portal, "color-scheme");
  const Value* ofGnome = gnome(portal, "color-scheme");
  if (is(preference, 1)) return ColourScheme::dark;
  if (is(preference, 2)) return ColourScheme::light;
  if (is(ofGnome, "prefer-dark")) return ColourScheme::dark;
  if (is(ofGnome, "prefer-light")) return ColourScheme::light;
  return isDarkTheme(theme) ? ColourScheme::dark : ColourScheme::light;
}

// Of a text, which is how KDE gives its numbers.
bool isZero(const Value* value) {
  const auto text = textOf(value);
  double number = 1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number == 0;
}

// One source that turns animations off is enough.
bool animationsOf(const Dictionary& portal, const Dictionary& xsettings) {
  return !is(find(xsettings, "Gtk/EnableAnimations"), 0) &&
         !is(gnome(portal, "enable-animations"), false) &&
         !is(appearance(portal, "reduced-motion"), 1) &&
         !isZero(setting(portal, "org.kde.kdeglobals.KDE", "AnimationDurationFactor"));
}

std::optional<Accent> accentOf(const Value* value) {
  const List* list = value != nullptr ? value->list() : nullptr;
  if (list == nullptr || list->size() != 3) return std::nullopt;
  const auto part = [list](std::size_t i) { return (*list)[i].number().value_or(-1); };
  const Accent accent{part(0), part(1), part(2)};
  for (const double p : {accent.red, accent.green, accent.blue}) {
    // Out of range is the portal's sign for none. The negated comparison also rejects NaN.
    if (!(p >= 0 && p <= 1)) return std::nullopt;
  }
  return accent;
}

double textScaleOf(const Value* value) {
  const auto factor = value != nullptr ? value->number() : std::nullopt;
  if (!factor || !(*factor > 0)) return 1;
  return std::clamp(*factor, 0.5, 3.0);
}

}  // namespace

Look lookOf(const Dictionary& portal, const Dictionary& xsettings) {
  const auto theme = themeOf(portal, xsettings);
  Look look;
  look.scheme = schemeOf(portal, theme);
  look.highContrast =
      is(appearance(portal, "contrast"), 1) ||
      is(setting(portal, "org.gnome.desktop.a11y.interface", "high-contrast"), true) ||
      isHighContrastTheme(theme);
  look.animations = animationsOf(portal, xsettings);
  look.accent = accentOf(appearance(portal, "accent-color"));
  // A portal answers with GNOME's settings wherever GNOME's libraries are, so the settings daemon,
  // which belongs to the desktop, comes first. It also turns larger text into more dots per inch,
  // which Qt follows: to scale the font as well would count it twice.
  auto font = textOf(find(xsettings, "Gtk/FontName"));
  if (font.empty()) font = textOf(gnome(portal, "font-name"));
  if (!font.empty()) look.font = parseFontDescription(font);
  if (xsettings.empty()) look.textScale = textScaleOf(gnome(portal, "text-scaling-factor"));
  return look;
}

}  // namespace tollbeam
