// Ties the form's controls to the preferences: each shows what its key holds, whoever changed it,
// and the user's action on it is stored at once. Showing never stores.
#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "platform/Subscription.h"
#include "platform/UserDefaults.h"
#include "preferences/MinutesBinding.h"
#include "ui/SoundPicker.h"
#include "ui/controls/Stepper.h"
#include "ui/controls/Switch.h"
#include "ui/controls/Text.h"
#include "ui/controls/TimeField.h"

namespace tollbeam {

class Bindings final : public QObject {
  Q_OBJECT

 public:
  /// `store` must outlive the bindings, and the bound controls must not outlive them.
  explicit Bindings(UserDefaults& store);

  void bind(Switch* control, const char* key);
  /// `label` says `text` with the number in the place of %1, and so does the stepper's name.
  void bind(Stepper* control, const char* key, Text* label, const QString& text);
  void bind(SoundPicker* control, const char* key);
  void bind(TimeField* control, MinutesBinding minutes);
  /// The row can be used while the key is true.
  void enable(QWidget* row, const char* key);

  /// Shows what the store holds now.
  void show();

 private:
  void follow(std::function<void()> reader);
  void write(const char* key, Value value);

  UserDefaults& store_;
  std::vector<std::function<void()>> readers_;
  Subscription changes_;
};

}  // namespace tollbeam
