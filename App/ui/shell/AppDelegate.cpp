#include "ui/shell/AppDelegate.h"

#include <QGuiApplication>
#include <QPointer>

#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "ui/popover/PopoverView.h"
#include "ui/settings/SettingsView.h"
#include "ui/settings/SettingsWindow.h"
#include "ui/shell/BatteryStatus.h"

namespace tollbeam {

AppDelegate::AppDelegate(const Platform& platform, StatusBar& statusBar,
                         OutsideClicks& outsideClicks)
    : platform_(platform),
      statusBar_(statusBar),
      model_({.mainQueue = platform.mainQueue,
              .clock = platform.clock,
              .calendar = platform.calendar,
              .fileManager = platform.fileManager,
              .userDefaults = platform.userDefaults,
              .mainBundle = platform.mainBundle,
              .powerSources = platform.powerSources,
              .processInfo = platform.processInfo,
              .workspace = platform.workspace,
              .notificationCenter = platform.notificationCenter,
              .dialogs = platform.dialogs}),
      style_(platform.appearance) {
  auto* view = new PopoverView(model_, platform.clock, platform.calendar, style_,
                               [this] { openSettings(); });
  popover_ =
      std::make_unique<Popover>(outsideClicks, platform.compositor, platform.clock, style_, view);
  connect(popover_.get(), &Popover::aboutToShow, view, &PopoverView::refresh);
}

void AppDelegate::applicationDidFinishLaunching() {
  // The program runs on when its last window is closed.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  platform_.userDefaults.registerDefaults(Prefs::defaults());
  statusItem_ = statusBar_.createStatusItem(
      {.activate = [this](const auto& position) { togglePopover(position); },
       .openSettings = [this] { openSettings(); },
       .quit = [] { QCoreApplication::quit(); }});
  connect(&model_, &AppModel::stateChanged, this, &AppDelegate::redrawSoon);
  preferences_ = platform_.userDefaults.onChange([this] { redrawSoon(); });
  model_.start();
  updateStatusItem();
}

void AppDelegate::applicationWillTerminate() { model_.history().save(platform_.clock.now()); }

void AppDelegate::togglePopover(std::optional<ClickPosition> position) {
  if (!statusItem_) return;
  if (popover_->isVisible()) {
    popover_->close();
  } else if (!popover_->takeClosingClick()) {
    showPopover(position);
  }
}

void AppDelegate::showPopover(std::optional<ClickPosition> position) {
  if (popover_->isVisible()) {
    popover_->raise();
    popover_->activateWindow();
    return;
  }
  model_.refresh(AppModel::Reason::event);
  popover_->showAt(position);
}

void AppDelegate::openSettings() {
  popover_->close();
  if (!settingsWindow_) {
    auto* view = new SettingsView(model_,
                                  {.userDefaults = platform_.userDefaults,
                                   .systemSounds = platform_.systemSounds,
                                   .loginItem = platform_.loginItem,
                                   .dialogs = platform_.dialogs,
                                   .calendar = platform_.calendar,
                                   .clock = platform_.clock},
                                  style_);
    settingsWindow_ = std::make_unique<SettingsWindow>(style_, view);
  }
  settingsWindow_->bringToFront();
}

void AppDelegate::updateStatusItem() {
  if (!statusItem_) return;
  statusItem_->setContent(batteryStatus(model_.state(), Prefs::current(platform_.userDefaults)));
}

void AppDelegate::redrawSoon() {
  platform_.mainQueue.async([self = QPointer<AppDelegate>(this)] {
    if (self) self->updateStatusItem();
  });
}

}  // namespace tollbeam
