#include "ui/controls/Fill.h"

#include <QImage>
#include <QPaintDevice>

namespace tollbeam {

void paintWhole(QPainter& painter, const QRect& rect, bool enabled,
                const std::function<void(QPainter&)>& paint) {
  if (enabled) return paint(painter);
  const double ratio = painter.device()->devicePixelRatioF();
  QImage layer((QSizeF(rect.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
  layer.setDevicePixelRatio(ratio);
  layer.fill(Qt::transparent);
  {
    QPainter onLayer(&layer);
    onLayer.translate(-rect.topLeft());
    paint(onLayer);
  }
  painter.setOpacity(kDisabledOpacity);
  painter.drawImage(rect.topLeft(), layer);
}

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

}  // namespace tollbeam
