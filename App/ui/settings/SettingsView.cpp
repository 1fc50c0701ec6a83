#include "ui/settings/SettingsView.h"

#include <QShowEvent>
#include <QVBoxLayout>

#include "ui/controls/ScrollPage.h"

namespace tollbeam {

/// A card: the switch of an alert, the number at which it is due, and its sound.
struct SettingsView::Alert {
  QString title;
  const char* enabledKey;
  /// With the number in place of %1. Empty: the alert has no number.
  QString number;
  const char* numberKey;
  Range range;
  /// Null: the alert is not repeated.
  const char* repeatKey;
  const char* soundKey;
};

SettingsView::SettingsView(AppModel& model, const Ports& ports, const Style& style)
    : bindings_(ports.userDefaults) {
  auto* form = new Form(style);
  addAlerts(*form, ports.systemSounds, model.notifier());
  addQuietHours(*form, ports);
  addMenuBar(*form);
  general_ = new GeneralSection(*form, model, ports.loginItem, ports.dialogs);
  addChargingNote(*form);
  form->finish();

  auto* scroll = new ScrollPage(style, form);
  for (Stepper* stepper : form->findChildren<Stepper*>()) scroll->keepWheelFrom(stepper);
  for (TimeField* field : form->findChildren<TimeField*>()) scroll->keepWheelFrom(field);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(scroll);
  page_ = scroll;
}

Switch* SettingsView::addSwitch(Form& form, Card* card, const QString& label, const char* key,
                                Role role) {
  auto* control = new Switch(form.style());
  card->add(form.row(label, control, role));
  bindings_.bind(control, key);
  return control;
}

void SettingsView::addAlerts(Form& form, SystemSounds& sounds, Notifier& notifier) {
  form.addHeader(tr("Alerts"));
  for (const Alert& alert : {
           Alert{tr("Charge limit"),
                 "limitEnabled",
                 tr("Alert when charging reaches %1%"),
                 "limit",
                 {50, 100},
                 "repeatReminder",
                 "limitSound"},
           Alert{tr("Low battery"),
                 "lowEnabled",
                 tr("Alert on battery at %1% or less"),
                 "low",
                 {5, 50},
                 nullptr,
                 "lowSound"},
           Alert{tr("Suggest Low Power Mode"),
                 "lowPowerEnabled",
                 tr("When on battery below %1%"),
                 "lowPowerAt",
                 {10, 60},
                 nullptr,
                 "lowPowerSound"},
           Alert{tr("Plugged in too long"),
                 "longEnabled",
                 tr("Alert after %1 h plugged in above the charge limit"),
                 "longHours",
                 {1, 48},
                 nullptr,
                 "longSound"},
           Alert{tr("Battery health below 80% (once)"),
                 "healthEnabled",
                 {},
                 nullptr,
                 {},
                 nullptr,
                 "healthSound"},
       }) {
    addAlert(form, alert, sounds, notifier);
  }
}

void SettingsView::addAlert(Form& form, const Alert& alert, SystemSounds& sounds,
                            Notifier& notifier) {
  const Style& style = form.style();
  Card* card = form.addCard(alert.title);
  const auto addDependent = [&](FormRow* row) {
    card->add(row);
    bindings_.enable(row, alert.enabledKey);
  };
  const auto* enabled = addSwitch(form, card, alert.title, alert.enabledKey, Role::bodyMedium);
  connect(enabled, &Switch::toggled, this, [&notifier](bool on) {
    if (on && notifier.available()) notifier.requestIfNeeded();
  });
  if (!alert.number.isEmpty()) {
    auto* stepper = new Stepper(style, alert.range);
    auto* label = new Text(style, Role::body, Ink::primary);
    auto* row = new FormRow(style);
    row->put(label, stepper);
    addDependent(row);
    bindings_.bind(stepper, alert.numberKey, label, alert.number);
  }
  if (alert.repeatKey) {
    auto* repeat = new Switch(style);
    addDependent(form.row(tr("Repeat every 5 minutes, up to 3 times"), repeat));
    bindings_.bind(repeat, alert.repeatKey);
  }
  auto* sound = new SoundPicker(style, sounds, alert.title);
  addDependent(sound);
  bindings_.bind(sound, alert.soundKey);
}

void SettingsView::addQuietHours(Form& form, const Ports& ports) {
  constexpr const char* kEnabled = "quietEnabled";
  form.addHeader(tr("Quiet hours"));
  Card* card = form.addCard(tr("Quiet hours"));
  addSwitch(form, card, tr("Hold alerts during quiet hours"), kEnabled);
  const auto addTime = [&](const QString& label, const char* key) {
    auto* field = new TimeField(form.style());
    FormRow* row = form.row(label, field);
    card->add(row);
    bindings_.bind(field, MinutesBinding(ports.userDefaults, key, ports.calendar, ports.clock));
    bindings_.enable(row, kEnabled);
  };
  addTime(tr("From"), "quietStart");
  addTime(tr("Until"), "quietEnd");
}

void SettingsView::addMenuBar(Form& form) {
  form.addHeader(tr("Menu bar"));
  Card* card = form.addCard(tr("Menu bar"));
  addSwitch(form, card, tr("Show percentage in the menu bar"), "showPercent");
  addSwitch(form, card, tr("Show time remaining"), "showTime");
}

void SettingsView::addChargingNote(Form& form) {
  auto* note = new Text(form.style(), Role::caption, Ink::secondary);
  note->setText(
      tr("macOS may also hold charging at 80% itself (Optimized Battery Charging, System Settings, "
         "Battery). Tollbeam can only remind you; it cannot control charging."));
  form.addNote(form.addCard(QString()), note);
}

void SettingsView::showEvent(QShowEvent* event) {
  // The time zone and the desktop's settings may have changed while the window was closed.
  bindings_.show();
  general_->readLaunchAtLogin();
  // Puts the keyboard focus on the page, where keys scroll, before the first control. When the
  // desktop shows the window again, the focus stays where the user left it.
  if (!event->spontaneous()) page_->setFocus(Qt::OtherFocusReason);
  QWidget::showEvent(event);
}

}  // namespace tollbeam
