#include "platform/freedesktop/appearance/ToolkitTheme.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyle>

namespace tollbeam {
namespace {

// A palette without a theme is the style's own, down to the last role. Compared by colours: the
// palettes differ in which roles they claim to have set.
bool isStylesOwn(const QPalette& palette) {
  const QPalette own = QApplication::style()->standardPalette();
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
      const auto r = static_cast<QPalette::ColorRole>(role);
      if (r != QPalette::NoRole && palette.color(group, r) != own.color(group, r)) return false;
    }
  }
  return true;
}

// What Qt takes on X11 and Wayland when it is not told anything.
bool isQtsOwn(const QFont& font) {
  constexpr double kSize = 9;
  return (font.family() == QLatin1String("Sans Serif") || font.family() == QLatin1String("Sans")) &&
         font.pointSizeF() == kSize;
}

}  // namespace

ToolkitTheme ToolkitTheme::ofApplication() {
  ToolkitTheme theme;
  theme.bringsColours = !isStylesOwn(QApplication::palette());
  // One that brings colours is a whole theme; its font may be Qt's usual one by the user's choice.
  theme.bringsFont = theme.bringsColours || !isQtsOwn(QApplication::font());
  return theme;
}

}  // namespace tollbeam
