// Owns the model and everything that the program shows: status item, popover and settings window.
// Starts the model at launch and saves the history when the program ends.
#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "model/AppModel.h"
#include "platform/OutsideClicks.h"
#include "platform/Platform.h"
#include "platform/StatusBar.h"
#include "platform/Subscription.h"
#include "ui/look/Style.h"
#include "ui/popover/Popover.h"
#include "ui/settings/SettingsWindow.h"

namespace tollbeam {

class AppDelegate final : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the delegate, the ports of `platform` too.
  AppDelegate(const Platform& platform, StatusBar& statusBar, OutsideClicks& outsideClicks);

  /// The launch sequence. Call it once, before the event loop runs.
  void applicationDidFinishLaunching();

  /// Saves the history.
  void applicationWillTerminate();

  /// Closes the popover, or refreshes the model and opens it.
  void togglePopover(std::optional<ClickPosition> position = {});

  /// Opens the popover, or brings it to the front. A second start of the program calls this.
  void showPopover(std::optional<ClickPosition> position = {});

  /// Closes the popover and brings the settings window to the front.
  void openSettings();

  /// Redraws the status item from the model and the preferences.
  void updateStatusItem();

  [[nodiscard]] AppModel& model() { return model_; }
  [[nodiscard]] Popover& popover() { return *popover_; }
  /// Null until the settings are first opened.
  [[nodiscard]] QWidget* settingsWindow() { return settingsWindow_.get(); }

 private:
  void redrawSoon();

  Platform platform_;
  StatusBar& statusBar_;
  AppModel model_;
  Style style_;
  std::unique_ptr<StatusItem> statusItem_;
  std::unique_ptr<Popover> popover_;
  std::unique_ptr<SettingsWindow> settingsWindow_;
  Subscription preferences_;
};

}  // namespace tollbeam
