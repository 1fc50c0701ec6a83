// A push button of Tollbeam's own: text on a rounded fill.
#pragma once

#include <QPushButton>

#include "ui/look/Style.h"

namespace tollbeam {

class Button final : public QPushButton {
  Q_OBJECT

 public:
  /// `style` must outlive the button. `ink` is red for what cannot be undone.
  Button(const Style& style, const QString& text, QWidget* parent = nullptr,
         Ink ink = Ink::primary);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const Style& style_;
  const Ink ink_;
};

}  // namespace tollbeam
