#include "ui/settings/GeneralSection.h"

#include <QAccessible>
#include <QPointer>

#include "texts/Translated.h"
#include "ui/controls/Button.h"

namespace tollbeam {

namespace {

constexpr FormRow::Measures kButtonRow{.least = 44};
// The error is closer to its switch than other rows, without a line between them.
constexpr FormRow::Measures kAboveError{.least = 36, .below = 2};
constexpr FormRow::Measures kError{.least = 0, .vertical = 0, .below = 12};

constexpr std::size_t kReset = 0;

}  // namespace

GeneralSection::GeneralSection(Form& form, AppModel& model, LoginItem& loginItem, Dialogs& dialogs)
    : QObject(&form),
      model_(model),
      loginItem_(loginItem),
      dialogs_(dialogs),
      launchAtLogin_(new Switch(form.style())),
      launchRow_(form.row(tr("Launch at Login"), launchAtLogin_)),
      loginError_(new Text(form.style(), Role::caption, Ink::red)) {
  form.addHeader(tr("General"));
  Card* card = form.addCard(tr("General"));
  card->add(launchRow_);
  errorRow_ = form.addNote(card, loginError_, kError);
  errorRow_->setHairline(false);
  errorRow_->hide();
  connect(launchAtLogin_, &Switch::toggled, this, &GeneralSection::setLaunchAtLogin);
  readLaunchAtLogin();

  const auto addButton = [&](const QString& text) {
    auto* button = new Button(form.style(), text);
    auto* row = new FormRow(form.style(), kButtonRow);
    row->put(button);
    card->add(row);
    return button;
  };
  connect(addButton(tr("Export History as CSV…")), &Button::clicked, &model_,
          &AppModel::exportHistoryCSV);
  connect(addButton(tr("Reset History…")), &Button::clicked, this, &GeneralSection::askToReset);

  if (!model_.notifier().available()) {
    auto* note = new Text(form.style(), Role::caption, Ink::orange);
    note->setText(
        tr("Notifications need Tollbeam to run as an app bundle (see make_app.sh). Run "
           "from the command line, alerts cannot be delivered."));
    form.addNote(card, note);
  }
}

void GeneralSection::setLaunchAtLogin(bool on) {
  setLoginError(on ? loginItem_.registerItem() : loginItem_.unregisterItem());
  readLaunchAtLogin();
}

void GeneralSection::readLaunchAtLogin() {
  launchAtLogin_->setOn(loginItem_.status() == LoginItem::Status::enabled);
}

void GeneralSection::setLoginError(const std::optional<Message>& reason) {
  loginError_->setText(reason ? tr("Could not change Launch at Login: %1").arg(translated(*reason))
                              : QString());
  errorRow_->setVisible(reason.has_value());
  launchRow_->setMeasures(reason ? kAboveError : FormRow::Measures());
  if (!reason) return;
  QAccessibleEvent event(loginError_, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

void GeneralSection::askToReset() {
  if (confirmReset_) return;
  confirmReset_ = true;
  dialogs_.runAlert(
      {.message = tr("Reset history?").toStdString(),
       .informativeText =
           tr("This deletes all saved battery samples used for the chart.").toStdString(),
       .buttons = {tr("Reset").toStdString(), tr("Cancel").toStdString()},
       .destructive = true},
      [self = QPointer<GeneralSection>(this)](std::optional<std::size_t> button) {
        if (!self) return;
        self->confirmReset_ = false;
        if (button == kReset) self->model_.resetHistory();
      });
}

}  // namespace tollbeam
