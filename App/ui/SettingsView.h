// The content of the settings window: every control is bound to one key of the preferences and
// writes at once.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "platform/Subscription.h"
#include "platform/UserDefaults.h"

namespace tollbeam {

class SettingsView final : public QWidget {
  Q_OBJECT

 public:
  explicit SettingsView(UserDefaults& store);

 private:
  void read();

  UserDefaults& store_;
  std::vector<std::function<void()>> readers_;
  Subscription changes_;
};

}  // namespace tollbeam
