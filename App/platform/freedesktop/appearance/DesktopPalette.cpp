#include "platform/freedesktop/appearance/DesktopPalette.h"

#include "colour/Contrast.h"

namespace tollbeam {
namespace {

constexpr double kTextContrast = 4.5;
constexpr double kHighContrast = 7;

struct Ground {
  QColor window, text, base, highlight;
};

const Ground kLight{{0xf4, 0xf5, 0xf7}, {0x1b, 0x1e, 0x23}, {0xff, 0xff, 0xff}, {0x2f, 0x6c, 0xdb}};
const Ground kDark{{0x22, 0x25, 0x2a}, {0xec, 0xee, 0xf1}, {0x2c, 0x30, 0x36}, {0x5b, 0x90, 0xf2}};
const QColor kOnDark(0xff, 0xff, 0xff);
const QColor kOnLight(0x0e, 0x11, 0x16);
const QColor kVisited(0x9b, 0x4d, 0xca);

// `share` (0 to 1) of `b`, the rest `a`.
QColor mix(const QColor& a, const QColor& b, double share) { return mixed(b, a, share); }

QColor onColour(const QColor& ground) {
  return contrastRatio(kOnDark, ground) >= contrastRatio(kOnLight, ground) ? kOnDark : kOnLight;
}

Ground groundOf(const Look& look) {
  const bool dark = look.scheme == ColourScheme::dark;
  Ground ground = dark ? kDark : kLight;
  if (look.accent)
    ground.highlight = QColor::fromRgbF(static_cast<float>(look.accent->red),
                                        static_cast<float>(look.accent->green),
                                        static_cast<float>(look.accent->blue));
  if (look.highContrast) {
    ground.window = ground.base = dark ? Qt::black : Qt::white;
    ground.text = dark ? Qt::white : Qt::black;
    ground.highlight = readable(ground.highlight, ground.text, ground.window, kHighContrast);
  }
  return ground;
}

// Edges and shadows are lighter and darker than a button, which itself differs a little from the
// window.
void setRelief(QPalette& palette, const Ground& ground, const Look& look) {
  const bool dark = look.scheme == ColourScheme::dark;
  const double strength = look.highContrast ? 2 : 1;
  const QColor button = dark ? mix(ground.base, ground.text, 0.06 * strength)
                             : mix(ground.window, look.highContrast ? ground.text : ground.base,
                                   look.highContrast ? 0.08 : 0.6);
  palette.setColor(QPalette::Button, button);
  palette.setColor(QPalette::Light, mix(button, Qt::white, dark ? 0.18 * strength : 1));
  palette.setColor(QPalette::Midlight, mix(button, Qt::white, dark ? 0.09 * strength : 0.5));
  palette.setColor(QPalette::Mid, mix(button, Qt::black, (dark ? 0.2 : 0.15) * strength));
  palette.setColor(QPalette::Dark, mix(button, Qt::black, (dark ? 0.4 : 0.3) * strength));
  palette.setColor(QPalette::Shadow, mix(button, Qt::black, dark ? 0.8 : 0.6));
}

void setDisabled(QPalette& palette, const Ground& ground, const Look& look) {
  const double ratio = look.highContrast ? kTextContrast : 1;
  const QColor faint =
      readable(mix(ground.text, ground.window, 0.55), ground.text, ground.window, ratio);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                          QPalette::Link, QPalette::LinkVisited, QPalette::PlaceholderText})
    palette.setColor(QPalette::Disabled, role, faint);
  palette.setColor(QPalette::Disabled, QPalette::Base, mix(ground.base, ground.window, 0.6));
  const QColor grey = mix(ground.window, ground.text, 0.3);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, grey);
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, onColour(grey));
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
  palette.setColor(QPalette::Disabled, QPalette::Accent, grey);
#endif
}

}  // namespace

QPalette desktopPalette(const Look& look) {
  const Ground ground = groundOf(look);
  const double ratio = look.highContrast ? kHighContrast : kTextContrast;
  const auto onBase = [&](const QColor& colour) {
    return readable(colour, ground.text, ground.base, ratio);
  };
  QPalette palette;
  const auto set = [&palette](std::initializer_list<QPalette::ColorRole> roles,
                              const QColor& colour) {
    for (const auto role : roles) palette.setColor(role, colour);
  };
  // For all groups. The inactive one stays like this: a status utility's windows are often read
  // while another window has the keyboard.
  set({QPalette::Window}, ground.window);
  set({QPalette::Base, QPalette::ToolTipBase}, ground.base);
  set({QPalette::AlternateBase}, mix(ground.base, ground.text, 0.04));
  set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText},
      ground.text);
  set({QPalette::PlaceholderText}, onBase(mix(ground.text, ground.base, 0.45)));
  set({QPalette::BrightText}, Qt::white);
  set({QPalette::Highlight}, ground.highlight);
  set({QPalette::HighlightedText}, onColour(ground.highlight));
  set({QPalette::Link}, onBase(ground.highlight));
  set({QPalette::LinkVisited}, onBase(mix(ground.highlight, kVisited, 0.6)));
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
  set({QPalette::Accent}, ground.highlight);
#endif
  setRelief(palette, ground, look);
  setDisabled(palette, ground, look);
  return palette;
}

}  // namespace tollbeam
