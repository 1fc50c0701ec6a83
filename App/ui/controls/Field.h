// The shape that a drop-down and a time field share: a text at the edge where reading begins and
// chevrons at the other. All measures are at scale 1.
#pragma once

#include <QPainter>
#include <QWidget>
#include <array>
#include <initializer_list>

#include "ui/look/Style.h"

namespace tollbeam {

inline constexpr int kFieldHeight = 26;
inline constexpr double kFieldRadius = 7;
/// Between the field's edge and its text.
inline constexpr int kFieldLeading = 10;
/// Between the text and the chevrons.
inline constexpr int kFieldGap = 8;
/// What a field is wider than its text.
inline constexpr int kBesideFieldText = 36;

/// The points of a chevron, in a box 10 wide and 12 high.
using Chevron = std::array<QPointF, 3>;

/// The chevrons' box in a field of that size. `direction` is that of the window.
[[nodiscard]] QRect chevronBox(const Style& style, QSize field, Qt::LayoutDirection direction);

/// Paints all but the text, and leaves the painter antialiased and as opaque as the text must be.
void paintField(QPainter& painter, const Style& style, const QWidget& field, bool pressed,
                Qt::LayoutDirection direction, std::initializer_list<Chevron> chevrons);

/// Paints lines `width` thick, with round ends and corners, given in a box of size `unit` that is
/// scaled to `box`.
void paintStroke(QPainter& painter, const QRectF& box, QSizeF unit, double width,
                 const QColor& colour, std::initializer_list<Chevron> lines);

}  // namespace tollbeam
