#include "platform/freedesktop/appearance/DesktopAppearance.h"

#include <QApplication>
#include <QStyle>
#include <utility>

#include "platform/freedesktop/appearance/DesktopFont.h"
#include "platform/freedesktop/appearance/DesktopPalette.h"

namespace tollbeam {
namespace {

// Whether the palette is the style's own, as it is without a theme. Compared by colours: the
// palettes differ in which roles they mark as set.
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

// Whether the font is the one that Qt uses on X11 and Wayland without a theme.
bool isQtsOwn(const QFont& font) {
  return (font.family() == QLatin1String("Sans Serif") || font.family() == QLatin1String("Sans")) &&
         font.pointSizeF() == 9;
}

}  // namespace

ToolkitTheme ToolkitTheme::ofApplication() {
  const bool colours = !isStylesOwn(QApplication::palette());
  // One that brings colours is a whole theme: the user may have chosen Qt's own font there.
  return {.bringsColours = colours, .bringsFont = colours || !isQtsOwn(QApplication::font())};
}

DesktopAppearance::DesktopAppearance(Bus& sessionBus)
    : DesktopAppearance(sessionBus,
                        portalActivationOn(qgetenv("XDG_CURRENT_DESKTOP").toStdString()),
                        ToolkitTheme::ofApplication()) {}

DesktopAppearance::DesktopAppearance(Bus& sessionBus, Activation activation, ToolkitTheme theme)
    : theme_(theme),
      usualFont_(QApplication::font()),
      portal_(sessionBus,
              {QStringLiteral("org.freedesktop.appearance"),
               QStringLiteral("org.gnome.desktop.interface"),
               QStringLiteral("org.gnome.desktop.a11y.interface"),
               QStringLiteral("org.kde.kdeglobals.KDE")},
              activation) {
  connect(&portal_, &PortalSettings::changed, this, &DesktopAppearance::follow);
  if (const auto server = XServer::ofApplication()) {
    daemon_.emplace(*server);
    connect(&*daemon_, &XSettingsWatch::changed, this, &DesktopAppearance::follow);
  }
  look_ = currentLook();
  apply();
}

Look DesktopAppearance::currentLook() const {
  return lookOf(portal_.settings(), daemon_ ? daemon_->settings() : Dictionary());
}

void DesktopAppearance::follow() {
  auto look = currentLook();
  if (look == look_) return;
  // Before the palette: views that repaint in the new colours also read the contrast.
  look_ = std::move(look);
  apply();
  observers_.notify();
}

void DesktopAppearance::apply() const {
  // Setting either costs every window a repaint and a new layout.
  if (!theme_.bringsColours) {
    const QPalette palette = desktopPalette(look_);
    if (palette != QApplication::palette()) QApplication::setPalette(palette);
  }
  if (!theme_.bringsFont) {
    const QFont font = desktopFont(look_, usualFont_);
    if (font != QApplication::font()) QApplication::setFont(font);
  }
}

}  // namespace tollbeam
