#include "ui/settings/Bindings.h"

#include <utility>

#include "preferences/Prefs.h"

namespace tollbeam {

Bindings::Bindings(UserDefaults& store) : store_(store) {
  store_.registerDefaults(Prefs::defaults());
  changes_ = store_.onChange([this] { show(); });
}

Bindings::~Bindings() { storeSteps(); }

void Bindings::show() {
  for (const auto& reader : readers_) reader();
}

// Shows the value now and after each change.
void Bindings::read(std::function<void()> reader) {
  reader();
  readers_.push_back(std::move(reader));
}

// Does not wait until the store reports the change: the next click must start from the new value.
void Bindings::write(const char* key, Value value) {
  store_.set(key, std::move(value));
  show();
}

// Storing writes and synchronises a file, which is too slow for every step of a held stepper.
void Bindings::storeSteps() {
  for (const auto& [key, value] : std::exchange(steps_, {})) store_.set(key, value);
}

void Bindings::bind(Switch* control, const char* key) {
  read([this, control, key] { control->setOn(store_.boolForKey(key)); });
  connect(control, &Switch::toggled, this, [this, key](bool on) { write(key, on); });
}

void Bindings::bind(Stepper* control, const char* key, Text* label, const QString& text) {
  read([this, control, key, label, text] {
    const auto step = steps_.find(key);
    const std::int64_t value = step == steps_.end() ? store_.integerForKey(key) : step->second;
    control->setValue(value);
    const QString shown = text.arg(value);
    if (label->text() == shown) return;
    label->setText(shown);
    control->setAccessibleName(shown);
  });
  connect(control, &Stepper::wanted, this, [this, key](std::int64_t value) {
    steps_.insert_or_assign(key, value);
    show();
  });
  connect(control, &Stepper::settled, this, [this] {
    storeSteps();
    show();
  });
}

void Bindings::bind(SoundPicker* control, const char* key) {
  read([this, control, key] {
    control->setSound(QString::fromStdString(store_.stringForKey(key).value_or(kDefaultSound)));
  });
  connect(control, &SoundPicker::picked, this,
          [this, key](const QString& sound) { write(key, sound.toStdString()); });
}

void Bindings::bind(TimeField* control, MinutesBinding minutes) {
  control->setTodaysClock([minutes](TimeOfDay time) { return minutes.onTodaysClock(time); });
  read([control, minutes] { control->setTimeOfDay(minutes.time()); });
  connect(control, &TimeField::chosen, this, [this, minutes](TimeOfDay time) mutable {
    minutes.setTime(time);
    show();
  });
}

void Bindings::enable(QWidget* row, const char* key) {
  read([this, row, key] { row->setEnabled(store_.boolForKey(key)); });
}

}  // namespace tollbeam
