// The content of the settings window: a page of cards. Every control is bound to the preference of
// the same name, shows what is stored, whoever stored it, and stores at once what the user chooses.
#pragma once

#include <QWidget>

#include "model/AppModel.h"
#include "platform/Platform.h"
#include "ui/look/Style.h"
#include "ui/settings/Bindings.h"
#include "ui/settings/GeneralSection.h"

namespace tollbeam {

class SettingsView final : public QWidget {
  Q_OBJECT

 public:
  /// All must outlive the view.
  SettingsView(AppModel& model, const Platform& platform, const Style& style);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void addQuietHours(Form& form, const Platform& platform);
  void addMenuBar(Form& form);
  void addChargingNote(Form& form);

  Bindings bindings_;
  GeneralSection* general_;
  QWidget* page_;
};

}  // namespace tollbeam
