// The ground that all controls share: a rounded fill that answers to the pointer, outlined when the
// user asked for contrast.
#pragma once

#include <QPainter>
#include <QRectF>
#include <functional>

#include "ui/look/Colours.h"

namespace tollbeam {

struct ControlState {
  bool enabled = true;
  bool hovered = false;
  bool pressed = false;
};

/// The opacity of everything in a control, or in a row of them, that cannot be used.
inline constexpr double kDisabledOpacity = 0.45;

/// Paints a shape of several layers, which a disabled one lets shine through as a whole.
void paintWhole(QPainter& painter, const QRect& rect, bool enabled,
                const std::function<void(QPainter&)>& paint);

void paintFill(QPainter& painter, const QRectF& rect, double radius, const Colours& colours,
               ControlState state);

}  // namespace tollbeam
