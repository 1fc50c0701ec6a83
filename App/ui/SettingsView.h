// The content of the settings window: every control is bound to one key of the preferences and
// writes at once.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "AppModel.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"
#include "platform/UserDefaults.h"
#include "ui/look/Style.h"

namespace tollbeam {

class SettingsView final : public QWidget {
  Q_OBJECT

 public:
  SettingsView(AppModel& model, const Platform& platform, const Style& style);

 private:
  void read();

  UserDefaults& store_;
  std::vector<std::function<void()>> readers_;
  Subscription changes_;
};

}  // namespace tollbeam
