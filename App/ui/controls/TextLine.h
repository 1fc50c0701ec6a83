// One line of text as every control sets it: on a whole pixel's baseline, in the middle of its
// line's height and never lower than it has room for, in its own direction inside a mirrored
// window. With tabular figures, digits keep their place while they change: fonts without such
// figures are set digit by digit, in cells as wide as the widest one.
#pragma once

#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QString>

namespace tollbeam {

enum class Figures {
  proportional,
  tabular,  ///< all digits as wide as the widest
};

[[nodiscard]] double widthOfLine(const QString& text, const QFont& font,
                                 Figures figures = Figures::proportional);

/// The width of `text` with tabular figures.
[[nodiscard]] double tabularWidth(const QString& text, const QFont& font);

/// Paints `text` with tabular figures from `start`, on the baseline, in the painter's pen.
void paintTabular(QPainter& painter, QPointF start, const QString& text, const QFont& font);

/// The outline of `text` with tabular figures, from `start` on the baseline.
[[nodiscard]] QPainterPath tabularOutline(QPointF start, const QString& text, const QFont& font);

/// `y` moved to the nearest whole pixel of the device, where letters are sharp.
[[nodiscard]] double onDevicePixel(const QPainter& painter, double y);

/// Paints `text` in the painter's pen; `topLeft` is the corner of a line `height` high.
void paintLine(QPainter& painter, QPointF topLeft, double height, const QString& text,
               const QFont& font, Figures figures = Figures::proportional);

/// Paints `text` in the middle of `box`, `inset` from the edge where reading begins in a window of
/// that direction.
void paintAtLead(QPainter& painter, const QRect& box, int inset, const QString& text,
                 const QFont& font, Qt::LayoutDirection direction);

}  // namespace tollbeam
