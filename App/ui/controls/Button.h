// A push button in Tollbeam's own shape: text on a rounded fill.
#pragma once

#include <QPushButton>

#include "ui/look/Style.h"

namespace tollbeam {

class Button final : public QPushButton {
  Q_OBJECT

 public:
  Button(const Style& style, const QString& text, QWidget* parent = nullptr);

  /// Red for what cannot be undone.
  void setInk(Ink ink);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void restyle();

  const Style& style_;
  Ink ink_ = Ink::primary;
};

}  // namespace tollbeam
