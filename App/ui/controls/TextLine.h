// One line of text as every control sets it: on a whole pixel's baseline, in the middle of its
// line's height and never lower than it has room for, in its own direction inside a mirrored
// window.
#pragma once

#include <QFont>
#include <QPainter>
#include <QPointF>
#include <QRect>
#include <QString>

namespace tollbeam {

enum class Figures {
  proportional,
  tabular,  ///< all digits as wide as the widest
};

[[nodiscard]] double widthOfLine(const QString& text, const QFont& font, Figures figures);

/// `y` moved to the nearest whole pixel of the device, on which letters are sharp.
[[nodiscard]] double onDevicePixel(const QPainter& painter, double y);

/// Paints `text` in the painter's pen; `topLeft` is the corner of a line `height` high.
void paintLine(QPainter& painter, QPointF topLeft, double height, const QString& text,
               const QFont& font, Figures figures);

/// Paints `text` in the middle of `box`, `inset` from the edge where reading begins in a window of
/// that direction.
void paintAtLead(QPainter& painter, const QRect& box, int inset, const QString& text,
                 const QFont& font, Qt::LayoutDirection direction);

}  // namespace tollbeam
