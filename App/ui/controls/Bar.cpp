#include "ui/controls/Bar.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "ui/controls/Fill.h"
#include "ui/controls/FollowStyle.h"

namespace tollbeam {

namespace {

constexpr double kHeight = 6;
constexpr int kMilliseconds = 250;

}  // namespace

Bar::Bar(const Style& style, const QString& name, int total, QWidget* parent)
    : QProgressBar(parent), style_(style), filled_(*this, style, kMilliseconds) {
  setAccessibleName(name);
  setRange(0, total);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  followStyle(*this, style);
  setValue(0);
}

void Bar::setFilled(std::int64_t value, Tint tint) {
  if (tint != tint_) update();
  tint_ = tint;
  setValue(static_cast<int>(std::clamp<std::int64_t>(value, 0, maximum())));
  filled_.glideTo(this->value());
}

QSize Bar::sizeHint() const { return {style_.px(100), style_.px(kHeight)}; }

QSize Bar::minimumSizeHint() const { return {0, style_.px(kHeight)}; }

void Bar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF all(rect());
  const double radius = all.height() / 2;
  QPainterPath track;
  track.addRoundedRect(all, radius, radius);
  const Colours& colours = style_.colours();
  painter.fillPath(track, colours.track);

  QRectF part(all);
  part.setWidth(all.width() * filled_.value() / maximum());
  if (layoutDirection() == Qt::RightToLeft) part.moveRight(all.right());
  if (part.width() > 0) {
    QPainterPath fill;
    fill.addRoundedRect(part, radius, radius);
    painter.fillPath(fill.intersected(track), colours.graphics(tint_));
  }
  if (colours.outline.alpha() > 0) paintOutline(painter, all, radius, colours.outline);
}

}  // namespace tollbeam
