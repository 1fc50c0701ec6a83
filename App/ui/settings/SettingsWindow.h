// The window around the settings. It has its own size, in the look's measures, as far as the screen
// has room; in a lower one the form scrolls.
#pragma once

#include <QWidget>

#include "ui/look/Style.h"

namespace tollbeam {

class SettingsWindow final : public QWidget {
  Q_OBJECT

 public:
  /// Takes `view`; `style` must outlive the window. In the middle of the screen.
  SettingsWindow(const Style& style, QWidget* view);

  /// Shows the window before all others, with the keyboard, where it stood last.
  void bringToFront();

 protected:
  void moveEvent(QMoveEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void fit();

  const Style& style_;
};

}  // namespace tollbeam
