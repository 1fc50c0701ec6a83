// The section for launch at login and for the history's export and reset.
#pragma once

#include <QObject>
#include <optional>

#include "model/AppModel.h"
#include "platform/Dialogs.h"
#include "platform/LoginItem.h"
#include "ui/controls/Switch.h"
#include "ui/settings/Form.h"

namespace tollbeam {

class GeneralSection final : public QObject {
  Q_OBJECT

 public:
  /// Adds its header and its card to the form, which owns the section. Everything else must outlive
  /// the form.
  GeneralSection(Form& form, AppModel& model, LoginItem& loginItem, Dialogs& dialogs);

  /// Turns launch at login on or off. The switch then shows the desktop's actual state, which is
  /// the old one after a failure.
  void setLaunchAtLogin(bool on);

  /// Shows whether the program starts at login, which the desktop's own settings can change.
  void readLaunchAtLogin();

  /// Asks whether to delete the history, unless the question is still open.
  void askToReset();

 private:
  void setLoginError(const std::optional<Message>& reason);

  AppModel& model_;
  LoginItem& loginItem_;
  Dialogs& dialogs_;
  Switch* launchAtLogin_;
  FormRow* launchRow_;
  Text* loginError_;
  FormRow* errorRow_ = nullptr;
  bool confirmReset_ = false;
};

}  // namespace tollbeam
