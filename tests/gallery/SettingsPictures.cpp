#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QStringList>

#include "Days.h"
#include "Pictures.h"
#include "recorded/RecordedPlatform.h"
#include "support/ModelPorts.h"
#include "support/SettingsPorts.h"
#include "ui/controls/DropDown.h"
#include "ui/controls/TimeField.h"
#include "ui/settings/SettingsView.h"
#include "ui/shell/AlertDialogs.h"

namespace tollbeam::gallery {

namespace {

class NoSavePanels final : public SavePanels {
 public:
  void runSavePanel(SavePanel /*panel*/,
                    std::function<void(std::optional<std::string> path)> /*answer*/) override {}
};

struct Scene {
  RecordedPlatform platform{kNow};
  Style style{platform.appearance};
  NoSavePanels savePanels;
  std::optional<AppModel> model;
  std::optional<SettingsView> view;
  std::optional<AlertDialogs> dialogs;
};

using Prepare = std::function<void(RecordedPlatform&)>;
using Finish = std::function<void(SettingsView&)>;

// The control with this English name, in any language of the view.
QWidget* named(SettingsView& view, const char* name) {
  QStringList names;
  for (const char* context : {"tollbeam::SettingsView", "tollbeam::GeneralSection"}) {
    names += QCoreApplication::translate(context, name);
  }
  for (QWidget* widget : view.findChildren<QWidget*>()) {
    if (widget->focusPolicy() == Qt::NoFocus) continue;
    const auto* button = qobject_cast<QAbstractButton*>(widget);
    if (names.contains(widget->accessibleName()) || (button && names.contains(button->text()))) {
      return widget;
    }
  }
  qFatal("no control is named \"%s\"", name);
}

std::shared_ptr<QWidget> shown(const Prepare& prepare, const Finish& finish) {
  auto scene = std::make_shared<Scene>();
  scene->platform.userDefaults.values = {{"lowSound", "Submarine"},
                                         {"lowPowerEnabled", false},
                                         {"longSound", "none"},
                                         {"quietEnabled", true}};
  scene->platform.compositor.running = true;
  if (prepare) prepare(scene->platform);
  scene->model.emplace(test::modelPorts(scene->platform));
  scene->view.emplace(*scene->model, test::settingsPorts(scene->platform), scene->style);
  // The size that the settings window gives it.
  scene->view->resize(scene->style.px(480), scene->style.px(720));
  scene->view->show();
  if (finish) finish(*scene->view);
  return {scene, &*scene->view};
}

void toEnd(SettingsView& view) {
  QCoreApplication::processEvents();
  auto* bar = view.findChild<QScrollArea*>()->verticalScrollBar();
  bar->setValue(bar->maximum());
}

Picture settings(const char* name, Prepare prepare = {}, Finish finish = {}) {
  return {std::string("settings-") + name, [prepare, finish] { return shown(prepare, finish); }};
}

std::shared_ptr<QWidget> alert(const std::function<void(AlertDialogs&)>& ask) {
  auto scene = std::make_shared<Scene>();
  scene->platform.compositor.running = true;
  scene->dialogs.emplace(scene->platform.appearance, scene->platform.compositor, scene->savePanels);
  const QWidgetList before = QApplication::topLevelWidgets();
  ask(*scene->dialogs);
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (!before.contains(window)) return {scene, window};
  }
  return nullptr;
}

// Shows the question that the view asks when its button is clicked.
Picture resetQuestion() {
  return {"dialog-reset", [] {
            RecordedPlatform platform(kNow);
            AppModel model(test::modelPorts(platform));
            const Style style(platform.appearance);
            SettingsView view(model, test::settingsPorts(platform), style);
            static_cast<QAbstractButton*>(named(view, "Reset History…"))->click();
            return alert([&](AlertDialogs& dialogs) {
              dialogs.runAlert(platform.dialogs.alerts.at(0), [](auto) {});
            });
          }};
}

// Shows the question that the notifier asks when a switch is turned on.
Picture permissionQuestion() {
  return {"dialog-permission", [] {
            RecordedPlatform platform(kNow);
            platform.notificationCenter.status = AuthorizationStatus::notDetermined;
            AppModel model(test::modelPorts(platform));
            model.notifier().requestIfNeeded();
            platform.mainQueue.drain();
            return alert([&](AlertDialogs& dialogs) {
              dialogs.runAlert(platform.dialogs.alerts.at(0), [](auto) {});
            });
          }};
}

Picture exportError() {
  return {"dialog-export-error", [] {
            return alert([](AlertDialogs& dialogs) {
              dialogs.showError(
                  "The history could not be saved to "
                  "“/home/someone/Documents/Measurements/2025/Tollbeam-history.csv”.",
                  "No space left on device");
            });
          }};
}

}  // namespace

std::vector<Picture> settingsPictures() {
  return {
      settings("top"),
      settings("middle", {},
               [](SettingsView& view) {
                 QCoreApplication::processEvents();
                 view.findChild<QScrollArea*>()->verticalScrollBar()->setValue(300);
               }),
      settings("end", {}, toEnd),
      settings("focus", {},
               [](SettingsView& view) {
                 QCoreApplication::processEvents();
                 named(view, "Repeat every 5 minutes, up to 3 times")->setFocus(Qt::TabFocusReason);
               }),
      settings("time-focus", {},
               [](SettingsView& view) {
                 toEnd(view);
                 view.activateWindow();
                 named(view, "From")->setFocus(Qt::TabFocusReason);
               }),
      settings(
          "all-off",
          [](RecordedPlatform& platform) {
            for (const char* key : {"limitEnabled", "lowEnabled", "longEnabled", "healthEnabled"}) {
              platform.userDefaults.values.insert_or_assign(key, false);
            }
          }),
      settings(
          "all-off-end",
          [](RecordedPlatform& platform) {
            platform.userDefaults.values = {
                {"healthEnabled", false}, {"quietEnabled", false}, {"showPercent", false}};
          },
          toEnd),
      settings("at-the-ends",
               [](RecordedPlatform& platform) {
                 platform.userDefaults.values = {
                     {"limit", 100}, {"low", 5}, {"lowPowerAt", 120}, {"longHours", 48}};
               }),
      settings(
          "login-error",
          [](RecordedPlatform& platform) { platform.loginItem.failure = "Permission denied"; },
          [](SettingsView& view) {
            static_cast<QAbstractButton*>(named(view, "Launch at Login"))->click();
            toEnd(view);
          }),
      settings(
          "login-error-unbundled",
          [](RecordedPlatform& platform) {
            platform.loginItem.failure = "Permission denied";
            platform.mainBundle.id.reset();
          },
          [](SettingsView& view) {
            static_cast<QAbstractButton*>(named(view, "Launch at Login"))->click();
            toEnd(view);
          }),
      settings("twelve-hours", {},
               [](SettingsView& view) {
                 for (auto* field : view.findChildren<TimeField*>()) {
                   field->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
                 }
                 toEnd(view);
               }),
      settings("sounds", {},
               [](SettingsView& view) {
                 QCoreApplication::processEvents();
                 view.activateWindow();
                 view.findChildren<DropDown*>().at(1)->open();
               }),
      settings("unknown-sound",
               [](RecordedPlatform& platform) {
                 platform.userDefaults.values.insert_or_assign("limitSound", "Doorbell");
               }),
      resetQuestion(),
      permissionQuestion(),
      exportError(),
  };
}

}  // namespace tollbeam::gallery
