// Launch at login, and what can be done with the history.
#pragma once

#include <QObject>
#include <optional>

#include "model/AppModel.h"
#include "platform/LoginItem.h"
#include "platform/Platform.h"
#include "ui/controls/Switch.h"
#include "ui/settings/Form.h"

namespace tollbeam {

class GeneralSection final : public QObject {
  Q_OBJECT

 public:
  /// Adds its header and its card to the form. Everything must outlive the section.
  GeneralSection(Form& form, AppModel& model, const Platform& platform);

  /// Asks the desktop to start the program at login, or not to. The switch shows what the desktop
  /// says afterwards, which after a failure is what it said before.
  void setLaunchAtLogin(bool on);

  /// Reads whether the program starts at login: the desktop's own settings may have changed it.
  void readLaunchAtLogin();

  /// Asks whether to delete the history, unless the question is open already.
  void askToReset();

 private:
  void addLaunchAtLogin(Form& form, Card& card);
  void setLoginError(const std::optional<Message>& reason);

  AppModel& model_;
  LoginItem& loginItem_;
  Dialogs& dialogs_;
  Switch* launchAtLogin_;
  FormRow* launchRow_ = nullptr;
  FormRow* errorRow_ = nullptr;
  Text* loginError_;
  bool confirmReset_ = false;
};

}  // namespace tollbeam
