// The row for an alert's sound: the desktop's default, none, or one of the system's by name. A
// sound that the user picks by name is played once.
#pragma once

#include "platform/SystemSounds.h"
#include "ui/controls/Card.h"
#include "ui/controls/DropDown.h"

namespace tollbeam {

class SoundPicker final : public FormRow {
  Q_OBJECT

 public:
  /// `alert` is the alert's title. It tells the five rows with the label "Sound" apart for screen
  /// readers.
  SoundPicker(const Style& style, SystemSounds& sounds, const QString& alert);

  /// "default", "none" or the name of a sound; an unknown name is shown as it is.
  void setSound(const QString& sound) { button_->setValue(sound); }

 Q_SIGNALS:
  /// Emitted when the user chooses another sound.
  void picked(const QString& sound);

 private:
  DropDown* button_;
};

}  // namespace tollbeam
