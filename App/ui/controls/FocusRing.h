// The ring around the control that has the keyboard: two pixels of accent, two pixels away from the
// control, in its shape. It shows only while the user works with the keyboard. Qt's focus frame
// keeps it in place; no style of Qt's shows one for the keyboard only.
#pragma once

#include <QFocusFrame>
#include <functional>

#include "ui/look/Style.h"

namespace tollbeam {

class FocusRing final : public QFocusFrame {
  Q_OBJECT

 public:
  /// A ring of `radius` (of the control itself, at scale 1) around `shape()`, the control's painted
  /// part in its own coordinates, which must lie within `kReach` of it; without a shape around the
  /// control's whole rectangle. With `whole` the ring surrounds that widget, of which the control
  /// is a part. The control owns the ring, and must live no longer than `style`.
  FocusRing(QWidget& control, const Style& style, double radius, std::function<QRect()> shape = {},
            QWidget* whole = nullptr);

  /// From a control's edge to the outer edge of its ring's farthest part, at scale 1.
  static constexpr int kReach = 8;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void appear();
  void disappear();

  QWidget& control_;
  QWidget& framed_;
  const Style& style_;
  const double radius_;
  const std::function<QRect()> shape_;
};

}  // namespace tollbeam
