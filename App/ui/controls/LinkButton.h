// A button that is drawn as a link, for an action inside a text. It takes clicks some pixels beyond
// its words (`reach`), so that it is easy to hit; a layout subtracts them from the space around it.
#pragma once

#include <QPushButton>

#include "ui/look/Style.h"

namespace tollbeam {

class LinkButton final : public QPushButton {
  Q_OBJECT

 public:
  /// `style` must outlive the button.
  LinkButton(const Style& style, const QString& text, QWidget* parent = nullptr);

  /// On every side of the words, in logical pixels.
  [[nodiscard]] int reach() const;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const Style& style_;
};

}  // namespace tollbeam
