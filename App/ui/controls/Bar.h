// A thin bar that fills from the edge where reading begins.
#pragma once

#include <QProgressBar>

#include "ui/controls/Motion.h"
#include "ui/look/Style.h"

namespace tollbeam {

class Bar final : public QProgressBar {
  Q_OBJECT

 public:
  /// `style` must outlive the bar. `name` is for screen readers.
  Bar(const Style& style, const QString& name, int total, QWidget* parent = nullptr);

  /// Clamps `value` to the range from 0 to the total.
  void setFilled(std::int64_t value, Tint tint);

  [[nodiscard]] Tint tint() const { return tint_; }
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Style& style_;
  Tint tint_ = Tint::accent;
  Motion filled_;
};

}  // namespace tollbeam
