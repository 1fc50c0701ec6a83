// Applies the desktop's preferences for a program's look: the palette and the font follow it while
// the program runs, unless Qt follows it by itself; contrast and animations are passed on.
//
// Build it after the application and before the first window. It listens to the settings portal
// and, on X11, to the settings daemon. Both may be missing, come later and restart; it waits for
// neither. Windows are shown anew when the screen's scale has changed; popovers close. Main thread
// only.
#pragma once

#include <QFont>
#include <QObject>
#include <optional>

#include "platform/Appearance.h"
#include "platform/freedesktop/appearance/PortalSettings.h"
#include "platform/freedesktop/appearance/XSettingsWatch.h"
#include "platform/freedesktop/appearance/readings/Look.h"

class QScreen;

namespace tollbeam {

/// What Qt takes from the desktop by itself. Its theme plugins (Plasma's, LXQt's, qt6ct, GTK's) and
/// its own reading of KDE's files bring colours, a font, or both, and follow changes. Without one
/// Qt shows the light colours of its style and a font of its own, whatever the desktop's settings
/// are.
struct ToolkitTheme {
  bool bringsColours = false;
  bool bringsFont = false;

  /// Call it before anything has set the application's palette or font: Qt does not name its theme,
  /// but a theme shows in what differs from the defaults.
  [[nodiscard]] static ToolkitTheme ofApplication();
};

class DesktopAppearance final : public QObject, public Appearance {
 public:
  /// `sessionBus` outlives this object.
  explicit DesktopAppearance(Bus& sessionBus);
  DesktopAppearance(Bus& sessionBus, Activation activation, ToolkitTheme theme);

  [[nodiscard]] bool highContrast() const override { return look_.highContrast; }
  [[nodiscard]] bool animations() const override { return look_.animations; }
  Subscription onChange(std::function<void()> changed) override {
    return observers_.add(std::move(changed));
  }

 private:
  [[nodiscard]] Look currentLook() const;
  void follow();
  void apply() const;
  void followScale(QScreen* screen);

  const ToolkitTheme theme_;
  const QFont usualFont_;
  PortalSettings portal_;
  std::optional<XSettingsWatch> daemon_;
  Look look_;
  Observers<> observers_;
};

}  // namespace tollbeam
