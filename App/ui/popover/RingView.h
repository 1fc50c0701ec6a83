// The battery's charge as a ring that fills clockwise from the top, with the percentage inside.
#pragma once

#include <QProgressBar>

#include "ui/controls/Motion.h"
#include "ui/look/Style.h"

namespace tollbeam {

class RingView final : public QProgressBar {
  Q_OBJECT

 public:
  /// `style` must outlive the ring.
  explicit RingView(const Style& style, QWidget* parent = nullptr);

  /// `percent`: 0 to 100.
  void setCharge(int percent, Tint color);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintPercent(QPainter& painter) const;

  const Style& style_;
  Tint color_ = Tint::accent;
  Motion filled_;
};

}  // namespace tollbeam
