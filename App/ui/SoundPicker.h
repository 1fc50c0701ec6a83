// Which sound an alert makes: the desktop's own, none, or one of the system's by name. A sound that
// the user picks by name is played once, so that it is known. The label "Sound" stands beside it.
#pragma once

#include <functional>

#include "ui/controls/DropDown.h"

namespace tollbeam {

class SoundPicker final : public QWidget {
  Q_OBJECT

 public:
  /// Plays the system sound of that name once, or nothing if there is none.
  using Play = std::function<void(const QString& name)>;

  SoundPicker(const Style& style, Play play, QWidget* parent = nullptr);

  /// "default", "none" or the name of a sound; another name is shown as it is.
  void setSound(const QString& sound);
  [[nodiscard]] const QString& sound() const { return button_->value(); }
  [[nodiscard]] DropDown& button() { return *button_; }

 Q_SIGNALS:
  /// The user's choice, and only that.
  void picked(const QString& sound);

 private:
  DropDown* button_;
};

}  // namespace tollbeam
