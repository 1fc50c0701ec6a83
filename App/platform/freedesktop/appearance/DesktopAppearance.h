// The desktop's wishes for a program's look, carried out: our palette and font follow it while we
// run, unless Qt follows it by itself; more contrast and no animations are passed on.
//
// Build it after the application and before the first window. It listens to the settings portal
// and, on X11, to the settings daemon. Both may be missing, come later and start anew; nothing here
// waits for either. Main thread only.
#pragma once

#include <QFont>
#include <QObject>
#include <optional>

#include "platform/Appearance.h"
#include "platform/freedesktop/appearance/LiveScale.h"
#include "platform/freedesktop/appearance/PortalSettings.h"
#include "platform/freedesktop/appearance/ToolkitTheme.h"
#include "platform/freedesktop/appearance/XSettingsWatch.h"
#include "platform/freedesktop/appearance/readings/Look.h"

namespace tollbeam {

class DesktopAppearance final : public QObject, public Appearance {
  Q_OBJECT

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
  void follow();
  void dress();

  const ToolkitTheme theme_;
  const QFont usualFont_;
  PortalSettings portal_;
  std::optional<XSettingsWatch> daemon_;
  LiveScale scale_;
  Look look_;
  Observers<> observers_;
};

}  // namespace tollbeam
