// The content of the settings window: a page of cards. Each control is bound to the preference of
// its name: it shows the stored value, whichever program stored it, and stores the user's choice at
// once.
#pragma once

#include <QWidget>

#include "model/AppModel.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/LoginItem.h"
#include "platform/SystemSounds.h"
#include "platform/UserDefaults.h"
#include "ui/look/Style.h"
#include "ui/settings/Bindings.h"
#include "ui/settings/GeneralSection.h"

namespace tollbeam {

class SettingsView final : public QWidget {
  Q_OBJECT

 public:
  struct Ports {
    UserDefaults& userDefaults;
    SystemSounds& systemSounds;
    LoginItem& loginItem;
    Dialogs& dialogs;
    const Calendar& calendar;
    const Clock& clock;
  };

  /// All must outlive the view.
  SettingsView(AppModel& model, const Ports& ports, const Style& style);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  struct Alert;

  void addAlerts(Form& form, SystemSounds& sounds, Notifier& notifier);
  void addAlert(Form& form, const Alert& alert, SystemSounds& sounds, Notifier& notifier);
  void addQuietHours(Form& form, const Ports& ports);
  void addMenuBar(Form& form);
  void addChargingNote(Form& form);
  Switch* addSwitch(Form& form, Card* card, const QString& label, const char* key,
                    Role role = Role::body);

  Bindings bindings_;
  GeneralSection* general_;
  QWidget* page_;
};

}  // namespace tollbeam
