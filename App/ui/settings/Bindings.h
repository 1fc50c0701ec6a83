// Binds the form's controls to the preferences. Each control always shows the value of its key, and
// stores the user's choice at once; a stepper that is held stores when it is released. Showing a
// value never stores it.
#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/Subscription.h"
#include "platform/UserDefaults.h"
#include "preferences/MinutesBinding.h"
#include "ui/controls/Stepper.h"
#include "ui/controls/Switch.h"
#include "ui/controls/Text.h"
#include "ui/controls/TimeField.h"
#include "ui/settings/SoundPicker.h"

namespace tollbeam {

class Bindings final : public QObject {
  Q_OBJECT

 public:
  /// `store` must outlive the bindings, and these the bound controls.
  explicit Bindings(UserDefaults& store);
  /// Stores the value of a stepper that is still held.
  ~Bindings() override;

  void bind(Switch* control, const char* key);
  /// Both `label` and the stepper's accessible name are `text` with the number in place of %1.
  void bind(Stepper* control, const char* key, Text* label, const QString& text);
  void bind(SoundPicker* control, const char* key);
  void bind(TimeField* control, MinutesBinding minutes);
  /// Enables the row while the key is true.
  void enable(QWidget* row, const char* key);

  /// Shows the stored values.
  void show();

 private:
  void read(std::function<void()> reader);
  void write(const char* key, Value value);
  void storeSteps();

  UserDefaults& store_;
  std::vector<std::function<void()>> readers_;
  /// By key, numbers that steppers show and that are not stored yet.
  std::map<std::string, std::int64_t> steps_;
  Subscription changes_;
};

}  // namespace tollbeam
