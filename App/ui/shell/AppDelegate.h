// The shell: owns the one model and Tollbeam's whole presence on the screen (status item, popover,
// settings window), starts the model at launch and saves the history when the program ends.
#pragma once

#include <QObject>
#include <memory>
#include <vector>

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
  AppDelegate(const Platform& platform, StatusBar& statusBar, OutsideClicks& outsideClicks);
  ~AppDelegate() override;

  /// The launch sequence; once, with the event loop about to run.
  void applicationDidFinishLaunching();

  /// Saves the history.
  void applicationWillTerminate();

  /// Opens the popover on fresh data, or closes it.
  void togglePopover(ClickPosition position = {});

  /// Opens the popover unless it is open; a second start of the program asks for this.
  void showPopover(ClickPosition position = {});

  /// Closes the popover and brings the one settings window to the front.
  void openSettings();

  /// Redraws the status item from the model and the preferences.
  void updateStatusItem();

  [[nodiscard]] AppModel& model() { return model_; }
  [[nodiscard]] Popover& popover() { return *popover_; }
  /// Null until the settings were first opened.
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
  std::vector<Subscription> bag_;
};

}  // namespace tollbeam
