// A number that glides to its next value, easing out, and repaints its widget on the way. It jumps
// where the user turned animations off, and while its widget is hidden.
#pragma once

#include <QVariantAnimation>
#include <QWidget>

#include "ui/look/Style.h"

namespace tollbeam {

class Motion final : public QObject {
  Q_OBJECT

 public:
  /// From 0, in `milliseconds` from any value to any other. Both must outlive the motion.
  Motion(QWidget& widget, const Style& style, int milliseconds);

  /// The current value, for painting.
  [[nodiscard]] double value() const { return value_; }

  void glideTo(double target);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void jumpTo(double target);

  QWidget& widget_;
  const Style& style_;
  double value_ = 0;
  double target_ = 0;
  QVariantAnimation animation_;
};

}  // namespace tollbeam
