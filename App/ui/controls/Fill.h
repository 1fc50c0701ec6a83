// The shapes that controls are painted on: a rounded fill that reacts to the pointer and is
// outlined when the user asked for more contrast, and a panel with an edge.
#pragma once

#include <QPainter>
#include <QRectF>

#include "ui/look/Colours.h"

namespace tollbeam {

struct ControlState {
  bool enabled = true;
  bool hovered = false;
  bool pressed = false;
};

/// The opacity of a control, or of a row of them, that is disabled.
inline constexpr double kDisabledOpacity = 0.45;

void paintFill(QPainter& painter, const QRectF& rect, double radius, const Colours& colours,
               ControlState state);

/// A line one pixel wide, inside `shape`.
void paintOutline(QPainter& painter, const QRectF& shape, double radius, const QColor& colour);

/// A card, a window or an open list, antialiased.
void paintPanel(QPainter& painter, const QRect& body, double radius, const QColor& ground,
                const QColor& edge);

}  // namespace tollbeam
