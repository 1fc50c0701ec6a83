// The soft shadow under the popover. Painted once, in nine pieces of which the middle ones stretch:
// a window that grows needs no new one.
#pragma once

#include <QImage>
#include <QMargins>
#include <QPainter>
#include <QRect>

#include "ui/look/Style.h"

namespace tollbeam {

class Shadow {
 public:
  /// How far it reaches out from the body it lies under; nowhere for who asked for contrast.
  [[nodiscard]] static QMargins reach(const Style& style);

  /// Paints what `exposed` shows of the shadow around `body`, a rectangle of the popover's corners.
  void paint(QPainter& painter, const QRect& body, const QRect& exposed, const Style& style);

 private:
  void make(const Style& style, double ratio);

  QImage picture_;
  bool dark_ = false;
  double scale_ = 0;
};

/// The popover's corners, at scale 1.
inline constexpr double kPopoverRadius = 12;

}  // namespace tollbeam
