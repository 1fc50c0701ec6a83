#include "ui/controls/Field.h"

#include <QStyle>

#include "ui/controls/Fill.h"

namespace tollbeam {

namespace {

constexpr int kTrailing = 8;
constexpr QSize kChevrons(10, 12);
static_assert(kBesideFieldText == kFieldLeading + kFieldGap + kChevrons.width() + kTrailing);

}  // namespace

QRect chevronBox(const Style& style, QSize field, Qt::LayoutDirection direction) {
  const QSize size(style.px(kChevrons.width()), style.px(kChevrons.height()));
  const QPoint corner(field.width() - style.px(kTrailing + kChevrons.width()),
                      (field.height() - size.height()) / 2);
  return QStyle::visualRect(direction, QRect(QPoint(), field), QRect(corner, size));
}

void paintField(QPainter& painter, const Style& style, const QWidget& field, bool pressed,
                Qt::LayoutDirection direction, std::initializer_list<Chevron> chevrons) {
  painter.setRenderHint(QPainter::Antialiasing);
  if (!field.isEnabled()) painter.setOpacity(kDisabledOpacity);
  paintFill(painter, field.rect(), style.px(kFieldRadius), style.colours(),
            {field.isEnabled(), field.underMouse(), pressed});
  paintStroke(painter, chevronBox(style, field.size(), direction), kChevrons, 1.5,
              style.colours().secondary, chevrons);
}

void paintStroke(QPainter& painter, const QRectF& box, QSizeF unit, double width,
                 const QColor& colour, std::initializer_list<Chevron> lines) {
  painter.save();
  painter.translate(box.topLeft());
  painter.scale(box.width() / unit.width(), box.height() / unit.height());
  painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (const Chevron& line : lines) painter.drawPolyline(line.data(), 3);
  painter.restore();
}

}  // namespace tollbeam
