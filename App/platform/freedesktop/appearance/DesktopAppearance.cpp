#include "platform/freedesktop/appearance/DesktopAppearance.h"

#include <QApplication>
#include <utility>

#include "platform/freedesktop/appearance/DesktopFont.h"
#include "platform/freedesktop/appearance/DesktopPalette.h"

namespace tollbeam {
namespace {

QStringList namespaces() {
  return {
      QStringLiteral("org.freedesktop.appearance"), QStringLiteral("org.gnome.desktop.interface"),
      QStringLiteral("org.gnome.desktop.a11y.interface"), QStringLiteral("org.kde.kdeglobals.KDE")};
}

}  // namespace

DesktopAppearance::DesktopAppearance(Bus& sessionBus)
    : DesktopAppearance(sessionBus,
                        portalActivationOn(qgetenv("XDG_CURRENT_DESKTOP").toStdString()),
                        ToolkitTheme::ofApplication()) {}

DesktopAppearance::DesktopAppearance(Bus& sessionBus, Activation activation, ToolkitTheme theme)
    : theme_(theme),
      usualFont_(QApplication::font()),
      portal_(sessionBus, namespaces(), activation) {
  connect(&portal_, &PortalSettings::changed, this, &DesktopAppearance::follow);
  if (const auto server = XServer::ofApplication()) {
    daemon_.emplace(*server);
    connect(&*daemon_, &XSettingsWatch::changed, this, &DesktopAppearance::follow);
  }
  look_ = lookOf(portal_.settings(), daemon_ ? daemon_->settings() : Dictionary());
  dress();
}

void DesktopAppearance::follow() {
  auto look = lookOf(portal_.settings(), daemon_ ? daemon_->settings() : Dictionary());
  if (look == look_) return;
  // First, because views that repaint in the new colours ask for the rest.
  look_ = std::move(look);
  dress();
  observers_.notify();
}

void DesktopAppearance::dress() {
  // Either costs every window a repaint and a new layout.
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
