// A title that opens and closes what stands below it: a triangle that turns, and the words. The
// whole row can be clicked, a little more than the text is high; Space and Return toggle it too.
#pragma once

#include <QAbstractButton>

#include "ui/controls/Motion.h"
#include "ui/look/Style.h"

namespace tollbeam {

class Disclosure final : public QAbstractButton {
  Q_OBJECT

 public:
  /// At scale 1: by how much the row is higher than its line of text, above and below.
  static constexpr int kReach = 4;

  /// Closed; checked means open. `style` must outlive it.
  Disclosure(const Style& style, const QString& text, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void onToggled(bool open);
  [[nodiscard]] int textWidth() const;

  const Style& style_;
  Motion turn_;
};

}  // namespace tollbeam
