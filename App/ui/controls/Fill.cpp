#include "ui/controls/Fill.h"

#include <algorithm>

namespace tollbeam {

void paintFill(QPainter& painter, const QRectF& rect, double radius, const Colours& colours,
               ControlState state) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const bool live = state.enabled;
  painter.setBrush(live && state.pressed   ? colours.fillPressed
                   : live && state.hovered ? colours.fillHover
                                           : colours.fill);
  painter.drawRoundedRect(rect, radius, radius);
  if (colours.outline.alpha() > 0) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colours.outline, 1));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  }
  painter.restore();
}

void paintOutline(QPainter& painter, const QRectF& shape, double radius, const QColor& colour) {
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colour, 1));
  const double inner = std::max(0.0, radius - 0.5);
  painter.drawRoundedRect(shape.adjusted(0.5, 0.5, -0.5, -0.5), inner, inner);
}

void paintPanel(QPainter& painter, const QRect& body, double radius, const QColor& ground,
                const QColor& edge) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawRoundedRect(body, radius, radius);
  paintOutline(painter, body, radius, edge);
}

}  // namespace tollbeam
