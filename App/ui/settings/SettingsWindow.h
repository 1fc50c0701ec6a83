// The window around the settings. Its size is fixed and follows the style, but is never larger than
// the screen's work area; in a lower window the form scrolls.
#pragma once

#include <QWidget>

#include "ui/look/Style.h"

namespace tollbeam {

class SettingsWindow final : public QWidget {
  Q_OBJECT

 public:
  /// Takes ownership of `view`; `style` must outlive the window. It opens in the middle of the
  /// screen.
  SettingsWindow(const Style& style, QWidget* view);

  /// Shows the window above all others at its last place and makes it the active one.
  void bringToFront();

 protected:
  void moveEvent(QMoveEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void fit();

  const Style& style_;
};

}  // namespace tollbeam
