// The row that chooses which sound an alert makes: the desktop's own, none, or one of the system's
// by name. A sound that the user picks by name is played once, so that it is known.
#pragma once

#include "platform/SystemSounds.h"
#include "ui/controls/Card.h"
#include "ui/controls/DropDown.h"

namespace tollbeam {

class SoundPicker final : public FormRow {
  Q_OBJECT

 public:
  /// `alert` is whose sound it is: five rows say "Sound", and a screen reader must tell them apart.
  SoundPicker(const Style& style, SystemSounds& sounds, const QString& alert);

  /// "default", "none" or the name of a sound; another name is shown as it is.
  void setSound(const QString& sound) { button_->setValue(sound); }

 Q_SIGNALS:
  /// The user's choice, when it is another than before.
  void picked(const QString& sound);

 private:
  DropDown* button_;
};

}  // namespace tollbeam
