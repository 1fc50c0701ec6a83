#include "ui/settings/SettingsView.h"

#include <QVBoxLayout>

#include "ui/controls/ScrollPage.h"
#include "ui/settings/AlertsSection.h"

namespace tollbeam {

namespace {

constexpr FormRow::Measures kNote{.least = 0, .vertical = 12, .below = 12};

}  // namespace

SettingsView::SettingsView(AppModel& model, const Platform& platform, const Style& style)
    : bindings_(platform.userDefaults) {
  auto* form = new Form(style);
  addAlerts(*form, bindings_, platform.systemSounds, [&notifier = model.notifier()] {
    if (notifier.available()) notifier.requestIfNeeded();
  });
  addQuietHours(*form, platform);
  addMenuBar(*form);
  general_ = new GeneralSection(*form, model, platform);
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

void SettingsView::addQuietHours(Form& form, const Platform& platform) {
  constexpr const char* kEnabled = "quietEnabled";
  form.addHeader(tr("Quiet hours"));
  Card* card = form.addCard(tr("Quiet hours"));
  auto* enabled = new Switch(form.style());
  card->add(form.row(tr("Hold alerts during quiet hours"), enabled));
  bindings_.bind(enabled, kEnabled);
  const auto addTime = [&](const QString& label, const char* key) {
    auto* field = new TimeField(form.style());
    FormRow* row = form.row(label, field);
    card->add(row);
    bindings_.bind(field,
                   MinutesBinding(platform.userDefaults, key, platform.calendar, platform.clock));
    bindings_.enable(row, kEnabled);
  };
  addTime(tr("From"), "quietStart");
  addTime(tr("Until"), "quietEnd");
}

void SettingsView::addMenuBar(Form& form) {
  form.addHeader(tr("Menu bar"));
  Card* card = form.addCard(tr("Menu bar"));
  const auto addSwitch = [&](const QString& label, const char* key) {
    auto* control = new Switch(form.style());
    card->add(form.row(label, control));
    bindings_.bind(control, key);
  };
  addSwitch(tr("Show percentage in the menu bar"), "showPercent");
  addSwitch(tr("Show time remaining"), "showTime");
}

void SettingsView::addChargingNote(Form& form) {
  auto* note = new Text(form.style(), Role::caption, Ink::secondary);
  note->setText(
      tr("macOS may also hold charging at 80% itself (Optimized Battery Charging, System Settings, "
         "Battery). Tollbeam can only remind you; it cannot control charging."));
  auto* row = new FormRow(form.style(), kNote);
  row->fill(note);
  form.addCard(QString())->add(row);
}

// What depends on the time of day, and what the desktop may have changed, is as of now.
void SettingsView::showEvent(QShowEvent* event) {
  bindings_.show();
  general_->readLaunchAtLogin();
  // The keyboard begins before the first control, where it scrolls. Where the desktop only brings
  // the window back, it stays where the user had it.
  if (!event->spontaneous()) page_->setFocus(Qt::OtherFocusReason);
  QWidget::showEvent(event);
}

}  // namespace tollbeam
