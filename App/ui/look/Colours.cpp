#include "ui/look/Colours.h"

#include "colour/Contrast.h"

namespace tollbeam {

namespace {

constexpr double kDarkBelow = 0.18;
constexpr double kTextContrast = 4.5;
// More for the banner's link: it is small and on a background of its own hue.
constexpr double kLinkContrast = 5.5;
constexpr double kGraphicsContrast = 3;
constexpr double kHighContrastText = 7;
constexpr double kHighContrastPalette = 20;

QColor at(const QColor& colour, double opacity) {
  QColor result = colour.toRgb();
  result.setAlphaF(static_cast<float>(opacity));
  return result;
}

// Our own colours, for light and dark backgrounds.
struct Shades {
  QRgb green, orange, red;
};
constexpr Shades kLightText{0xFF177A3C, 0xFF9A5400, 0xFFB42622};
constexpr Shades kLightGraphics{0xFF2A9A50, 0xFFD0740A, 0xFFDB3B35};
constexpr Shades kDarkText{0xFF55CC7C, 0xFFF5A94B, 0xFFFF8A80};
constexpr Shades kDarkGraphics{0xFF45C06E, 0xFFF0982E, 0xFFFF6B61};

QColor textOnAccent(const QPalette& palette, const QColor& accent) {
  const QColor own = palette.color(QPalette::Active, QPalette::HighlightedText);
  if (contrastRatio(own, accent) >= kTextContrast) return own;
  const QColor dark(0x0E, 0x11, 0x16);
  const QColor white(Qt::white);
  return contrastRatio(dark, accent) > contrastRatio(white, accent) ? dark : white;
}

}  // namespace

Colours coloursOf(const QPalette& palette, bool moreContrast) {
  const auto role = [&palette](QPalette::ColorRole r) {
    return palette.color(QPalette::Active, r).toRgb();
  };
  Colours c;
  c.surface = role(QPalette::Window);
  c.primary = role(QPalette::WindowText);
  c.dark = relativeLuminance(c.surface) < kDarkBelow;
  c.highContrast = moreContrast || contrastRatio(c.primary, c.surface) >= kHighContrastPalette;
  c.card = role(QPalette::Base);
  if (c.card == c.surface) c.card = mixed(c.primary, c.surface, 0.04);

  const auto words = [&c](const QColor& colour) {
    const double ratio = c.highContrast ? kHighContrastText : kTextContrast;
    const QColor onSurface = readable(colour, c.primary, c.surface, ratio);
    return readable(onSurface, c.primary, c.card, ratio);
  };
  const auto graphics = [&c](const QColor& colour) {
    return readable(colour, c.primary, c.surface, kGraphicsContrast);
  };

  c.secondary = c.highContrast
                    ? c.primary
                    : readable(mixed(c.primary, c.surface, 0.7), c.primary, c.surface, 4.5);
  c.accent = graphics(role(QPalette::Highlight));
  c.onAccent = textOnAccent(palette, c.accent);
  c.banner = at(c.accent, 0.12);
  const QColor bannerGround = mixed(c.accent, c.surface, 0.12);
  c.link = readable(words(c.accent), c.primary, bannerGround,
                    c.highContrast ? kHighContrastText : kLinkContrast);

  const Shades& text = c.dark ? kDarkText : kLightText;
  c.greenText = words(text.green);
  c.orangeText = words(text.orange);
  c.redText = words(text.red);
  const Shades& shades = c.dark ? kDarkGraphics : kLightGraphics;
  c.green = graphics(shades.green);
  c.orange = graphics(shades.orange);
  c.red = graphics(shades.red);

  c.track = at(c.secondary, c.highContrast ? 0.4 : 0.2);
  c.hairline = at(c.primary, c.highContrast ? 0.6 : 0.12);
  c.gridLine = at(c.primary, c.highContrast ? 0.35 : 0.07);
  c.edge = c.highContrast ? c.primary : at(c.primary, c.dark ? 0.16 : 0.14);
  c.fill = at(c.primary, 0.08);
  c.fillHover = at(c.primary, 0.13);
  c.fillPressed = at(c.primary, 0.20);
  c.scrollBar = at(c.primary, c.highContrast ? 0.6 : 0.28);
  c.outline = c.highContrast ? c.primary : QColor(Qt::transparent);

  c.switchOff = at(c.primary, 0.10);
  c.switchOffOutline = c.highContrast ? c.primary
                       : c.dark       ? QColor(0x8A, 0x90, 0x99)
                                      : QColor(0x85, 0x8A, 0x93);
  c.switchThumb = c.dark ? QColor(0xE6, 0xE8, 0xEB) : QColor(Qt::white);
  c.switchThumbOn = contrastRatio(Qt::white, c.accent) >= kGraphicsContrast
                        ? QColor(Qt::white)
                        : QColor(0x0E, 0x11, 0x16);
  c.segment = c.highContrast ? c.primary : c.dark ? at(c.primary, 0.20) : role(QPalette::Base);
  c.segmentText = c.highContrast ? c.surface : c.primary;
  return c;
}

QColor Colours::ink(Ink role) const {
  // In the order of Ink.
  const QColor inks[] = {primary, secondary, link, greenText, orangeText, redText};
  return inks[static_cast<std::size_t>(role)];
}

QColor Colours::graphics(Tint tint) const {
  // In the order of Tint.
  const QColor tints[] = {accent, green, orange, red};
  return tints[static_cast<std::size_t>(tint)];
}

}  // namespace tollbeam
