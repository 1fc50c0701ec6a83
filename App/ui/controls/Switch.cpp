#include "ui/controls/Switch.h"

#include <QImage>
#include <QPainter>
#include <QSignalBlocker>

#include "colour/Contrast.h"
#include "ui/controls/ControlStyle.h"
#include "ui/controls/Fill.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/FollowStyle.h"

namespace tollbeam {

namespace {

constexpr int kWidth = 36;
constexpr int kHeight = 20;
constexpr int kTarget = 24;
constexpr int kThumb = 16;
constexpr int kPressedThumb = 20;
constexpr int kInset = 2;
constexpr int kMilliseconds = 120;

const QColor kHoverOn(0, 0, 0, 26);
const QColor kThumbShadow(0, 0, 0, 46);

}  // namespace

Switch::Switch(const Style& style, QWidget* parent)
    : QCheckBox(parent), style_(style), thumb_(*this, style, kMilliseconds) {
  setStyle(ControlStyle::of(style));
  setFocusPolicy(Qt::StrongFocus);
  new FocusRing(*this, style, kHeight / 2.0, [this] { return shape(); });
  fixSize(*this, style, {kWidth, kTarget});
}

void Switch::setOn(bool on) {
  const QSignalBlocker blocker(this);
  setChecked(on);
}

void Switch::checkStateSet() {
  QCheckBox::checkStateSet();
  thumb_.glideTo(isChecked() ? 1 : 0);
}

void Switch::nextCheckState() {
  QCheckBox::nextCheckState();
  thumb_.glideTo(isChecked() ? 1 : 0);
}

QRect Switch::shape() const {
  QRect shape(0, 0, style_.px(kWidth), style_.px(kHeight));
  shape.moveCenter(rect().center());
  return shape;
}

void Switch::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (isEnabled()) return paintShape(painter);
  // Painted opaque first: layer by layer, the ground would shine through the thumb.
  const double ratio = painter.device()->devicePixelRatioF();
  QImage whole((QSizeF(size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
  whole.setDevicePixelRatio(ratio);
  whole.fill(Qt::transparent);
  {
    QPainter onWhole(&whole);
    paintShape(onWhole);
  }
  painter.setOpacity(kDisabledOpacity);
  painter.drawImage(QPoint(), whole);
}

void Switch::paintShape(QPainter& painter) const {
  const Colours& colours = style_.colours();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const QRectF ground = shape();
  const double on = thumb_.value();
  const bool hovered = isEnabled() && (underMouse() || isDown());
  const auto fill = [&](const QColor& colour, double share, const QRectF& rect) {
    QColor shade = colour;
    shade.setAlphaF(static_cast<float>(colour.alphaF() * share));
    painter.setBrush(shade);
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
  };
  fill(hovered ? colours.fillPressed : colours.switchOff, 1 - on, ground);
  fill(colours.accent, on, ground);
  if (hovered) fill(kHoverOn, on, ground);

  const double inset = style_.px(kInset);
  const double width = style_.px(isDown() ? kPressedThumb : kThumb);
  const double way = ground.width() - 2 * inset - width;
  const double along = layoutDirection() == Qt::RightToLeft ? 1 - on : on;
  const QRectF thumb(ground.left() + inset + along * way, ground.top() + inset, width,
                     ground.height() - 2 * inset);
  fill(kThumbShadow, on, thumb.translated(0, 1));
  fill(colours.switchOffOutline, 1 - on, thumb.adjusted(-1, -1, 1, 1));
  fill(mixed(colours.switchThumbOn, colours.switchThumb, on), 1, thumb);

  QColor outline = colours.switchOffOutline;
  if (!colours.highContrast) outline.setAlphaF(static_cast<float>(1 - on));
  if (outline.alpha() > 0) paintOutline(painter, ground, ground.height() / 2, outline);
}

}  // namespace tollbeam
