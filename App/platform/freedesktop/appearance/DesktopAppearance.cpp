#include "platform/freedesktop/appearance/DesktopAppearance.h"

#include <QApplication>
#include <QBackingStore>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <memory>
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

// A window that exists keeps its size in dots and the store that it is painted into, and would show
// only a part of itself at another scale.
void showAtNewScale(QWidget& window) {
  auto* store = window.backingStore();
  if (store == nullptr) return;
  const bool shown = window.isVisible();
  // A window gets its size in dots when it appears.
  window.hide();
  // No window has this size, so the next painting makes the store anew.
  store->resize(QSize(1, 1));
  // A popover gets its place and its clicks from the code that opens it.
  if (shown && window.windowType() == Qt::Window) window.show();
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
  for (auto* screen : QGuiApplication::screens()) followScale(screen);
  connect(qApp, &QGuiApplication::screenAdded, this, &DesktopAppearance::followScale);
  look_ = currentLook();
  apply();
}

// "Larger text" is more dots per inch on many X11 desktops: Qt then counts in larger pixels.
void DesktopAppearance::followScale(QScreen* screen) {
  const auto follow = [screen, ratio = std::make_shared<qreal>(screen->devicePixelRatio())] {
    if (screen->devicePixelRatio() == *ratio) return;
    *ratio = screen->devicePixelRatio();
    for (auto* window : QApplication::topLevelWidgets()) showAtNewScale(*window);
  };
  // Which of the two reports a new ratio depends on the version of Qt.
  connect(screen, &QScreen::logicalDotsPerInchChanged, this, follow);
  connect(screen, &QScreen::geometryChanged, this, follow);
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
