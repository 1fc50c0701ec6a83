#include "ui/settings/AlertsSection.h"

#include <QCoreApplication>

namespace tollbeam {

namespace {

constexpr const char* kContext = "tollbeam::SettingsView";

struct Number {
  /// With the number in the place of %1.
  const char* label;
  const char* key;
  Range range;
};

struct Alert {
  const char* title;
  const char* enabledKey;
  /// Without a label there is no number to choose.
  Number number;
  /// Null: this alert is not repeated.
  const char* repeat;
  const char* repeatKey;
  const char* soundKey;
};

constexpr Alert kAlerts[] = {
    {QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Charge limit"),
     "limitEnabled",
     {QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Alert when charging reaches %1%"),
      "limit",
      {50, 100}},
     QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Repeat every 5 minutes, up to 3 times"),
     "repeatReminder",
     "limitSound"},
    {QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Low battery"),
     "lowEnabled",
     {QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Alert on battery at %1% or less"),
      "low",
      {5, 50}},
     nullptr,
     nullptr,
     "lowSound"},
    {QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Suggest Low Power Mode"),
     "lowPowerEnabled",
     {QT_TRANSLATE_NOOP("tollbeam::SettingsView", "When on battery below %1%"),
      "lowPowerAt",
      {10, 60}},
     nullptr,
     nullptr,
     "lowPowerSound"},
    {QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Plugged in too long"),
     "longEnabled",
     {QT_TRANSLATE_NOOP("tollbeam::SettingsView",
                        "Alert after %1 h plugged in above the charge limit"),
      "longHours",
      {1, 48}},
     nullptr,
     nullptr,
     "longSound"},
    {QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Battery health below 80% (once)"),
     "healthEnabled",
     {},
     nullptr,
     nullptr,
     "healthSound"},
};

QString text(const char* source) { return QCoreApplication::translate(kContext, source); }

void addAlert(const Alert& alert, Form& form, Bindings& bindings, SystemSounds& sounds,
              const std::function<void()>& switchedOn) {
  const Style& style = form.style();
  Card* card = form.addCard(text(alert.title));
  const auto addEnabled = [&](FormRow* row) {
    card->add(row);
    bindings.enable(row, alert.enabledKey);
  };

  auto* enabled = new Switch(style);
  card->add(form.row(text(alert.title), enabled, Role::bodyMedium));
  bindings.bind(enabled, alert.enabledKey);
  QObject::connect(enabled, &Switch::toggled, enabled, [switchedOn](bool on) {
    if (on) switchedOn();
  });

  if (alert.number.label) {
    auto* stepper = new Stepper(style, alert.number.range);
    auto* label = new Text(style, Role::body, Ink::primary);
    auto* row = new FormRow(style);
    row->put(label, stepper);
    addEnabled(row);
    bindings.bind(stepper, alert.number.key, label, text(alert.number.label));
  }
  if (alert.repeat) {
    auto* repeat = new Switch(style);
    addEnabled(form.row(text(alert.repeat), repeat));
    bindings.bind(repeat, alert.repeatKey);
  }
  auto* sound = new SoundPicker(style, sounds, text(alert.title));
  addEnabled(sound);
  bindings.bind(sound, alert.soundKey);
}

}  // namespace

void addAlerts(Form& form, Bindings& bindings, SystemSounds& sounds,
               const std::function<void()>& switchedOn) {
  form.addHeader(text(QT_TRANSLATE_NOOP("tollbeam::SettingsView", "Alerts")));
  for (const Alert& alert : kAlerts) addAlert(alert, form, bindings, sounds, switchedOn);
}

}  // namespace tollbeam
