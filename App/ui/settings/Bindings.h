// Ties the form's controls to the preferences: each shows what its key holds, whoever changed it,
// and the user's action on it is stored at once, the steps of a held stepper when it is let go.
// Showing never stores.
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
  /// `store` must outlive the bindings, and the bound controls must not outlive them.
  explicit Bindings(UserDefaults& store);
  /// Stores what a stepper that is still held has come to.
  ~Bindings() override;

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
  void storeSteps();

  UserDefaults& store_;
  std::vector<std::function<void()>> readers_;
  /// By key, the numbers that steppers show already and the store does not hold yet.
  std::map<std::string, std::int64_t> steps_;
  Subscription changes_;
};

}  // namespace tollbeam
