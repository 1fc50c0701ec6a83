// The soft shadow under the popover and the alerts. It is drawn once and painted in nine pieces,
// the middle ones stretched, so that a window of any size uses the same picture.
#pragma once

#include <QImage>
#include <QMargins>
#include <QPainter>
#include <QRect>

#include "ui/look/Style.h"

namespace tollbeam {

class Shadow {
 public:
  /// How far it extends beyond the body; nothing under high contrast.
  [[nodiscard]] static QMargins reach(const Style& style);

  /// Paints the part inside `exposed` of the shadow around `body`, a rectangle with the popover's
  /// corners.
  void paint(QPainter& painter, const QRect& body, const QRect& exposed, const Style& style);

 private:
  void make(const Style& style, double ratio);

  QImage picture_;
  bool dark_ = false;
  double scale_ = 0;
};

/// Of the popover's corners, at scale 1.
inline constexpr double kPopoverRadius = 12;

}  // namespace tollbeam
