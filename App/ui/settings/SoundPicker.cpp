#include "ui/settings/SoundPicker.h"

#include "preferences/Prefs.h"

namespace tollbeam {

namespace {

constexpr const char* kNames[] = {"Glass",  "Ping", "Hero",  "Submarine", "Funk", "Basso",  "Blow",
                                  "Bottle", "Frog", "Morse", "Pop",       "Purr", "Sosumi", "Tink"};

QList<Choice> choices() {
  QList<Choice> all{
      {.text = SoundPicker::tr("Default"), .value = QString::fromLatin1(kDefaultSound)},
      {.text = SoundPicker::tr("None"), .value = QString::fromLatin1(kNoSound)}};
  for (const char* name : kNames) {
    // Names are not translated.
    const QString text = QString::fromLatin1(name);
    all.append({.text = text, .value = text, .startsGroup = all.size() == 2});
  }
  return all;
}

}  // namespace

SoundPicker::SoundPicker(const Style& style, SystemSounds& sounds, const QString& alert)
    : FormRow(style), button_(new DropDown(style, choices())) {
  auto* label = new Text(style, Role::body, Ink::primary);
  label->setText(tr("Sound"));
  put(label, button_);
  button_->setAccessibleDescription(alert);
  connect(button_, &DropDown::chosen, this, [this, &sounds](const QString& sound) {
    Q_EMIT picked(sound);
    if (sound != QLatin1String(kDefaultSound) && sound != QLatin1String(kNoSound)) {
      sounds.play(sound.toStdString());
    }
  });
}

}  // namespace tollbeam
