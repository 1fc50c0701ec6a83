// A number that glides to its next value, easing out, and repaints its widget on the way. It jumps
// where the desktop wants nothing to move, and never moves while its widget is hidden.
#pragma once

#include <QVariantAnimation>
#include <QWidget>

#include "ui/look/Style.h"

namespace tollbeam {

class Motion final : public QObject {
  Q_OBJECT

 public:
  /// Both must outlive the motion. `milliseconds` from any value to any other.
  Motion(QWidget& widget, const Style& style, int milliseconds, double value = 0);

  /// The value of the moment, for painting.
  [[nodiscard]] double value() const { return value_; }
  /// Where it is going or has come to rest.
  [[nodiscard]] double target() const { return target_; }

  void glideTo(double target);
  void jumpTo(double target);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget& widget_;
  const Style& style_;
  const int milliseconds_;
  double value_;
  double target_;
  QVariantAnimation animation_;
};

}  // namespace tollbeam
