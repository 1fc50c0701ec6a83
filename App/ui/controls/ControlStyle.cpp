#include "ui/controls/ControlStyle.h"

#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "ui/controls/Field.h"
#include "ui/controls/FocusRing.h"

namespace tollbeam {

namespace {

constexpr int kThumbWidth = 5;
constexpr int kThumbInset = 3;
constexpr int kLeastThumb = 24;

}  // namespace

ControlStyle* ControlStyle::of(const Style& look) {
  if (auto* made = look.findChild<ControlStyle*>()) return made;
  auto* made = new ControlStyle(look);
  // Owning a child does not change the look.
  made->setParent(const_cast<Style*>(&look));
  return made;
}

ControlStyle::ControlStyle(const Style& look)
    : QProxyStyle(QStringLiteral("fusion")), look_(look) {}

void ControlStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  // The page shows around the thumb.
  if (qobject_cast<QScrollBar*>(widget)) widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
}

int ControlStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
  switch (metric) {
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap:
      // Wider than its thumb, so that it can be caught; over the page, so that it takes no room.
      return look_.px(kThumbWidth + 2 * kThumbInset);
    case PM_ScrollBarSliderMin:
      return look_.px(kLeastThumb);
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin:
      return look_.px(FocusRing::kReach);
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int ControlStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_ScrollBar_LeftClickAbsolutePosition:
    case SH_FocusFrame_AboveWidget:
      return 1;
    case SH_ScrollBar_ContextMenu:
    case SH_FocusFrame_Mask:  // A ring may lie within its control's rectangle.
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

QRect ControlStyle::subElementRect(SubElement element, const QStyleOption* option,
                                   const QWidget* widget) const {
  switch (element) {
    // The whole switch and the whole segment take clicks, and screen readers get their rectangles.
    case SE_CheckBoxClickRect:
    case SE_RadioButtonClickRect:
      return option->rect;
    default:
      return QProxyStyle::subElementRect(element, option, widget);
  }
}

QRect ControlStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                   SubControl part, const QWidget* widget) const {
  if (control == CC_ScrollBar) {
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
      return partOf(*bar, part);
    }
  }
  if (control == CC_SpinBox && (part == SC_SpinBoxUp || part == SC_SpinBoxDown)) {
    // The upper and the lower half around the chevrons, as in a time field.
    const QRect field = option->rect;
    const QWidget* page = widget->parentWidget();
    const QRect box =
        chevronBox(look_, field.size(), page ? page->layoutDirection() : option->direction);
    const int reach = look_.px(kFieldGap);
    const int half = field.height() / 2;
    return {box.left() - reach, part == SC_SpinBoxUp ? 0 : half, box.width() + 2 * reach,
            part == SC_SpinBoxUp ? half : field.height() - half};
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

void ControlStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
  const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control != CC_ScrollBar || !bar) {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    return;
  }
  if (bar->maximum == bar->minimum) return;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  painter->setBrush(look_.colours().scrollBar);
  const double radius = look_.px(kThumbWidth) / 2.0;
  painter->drawRoundedRect(thumb(*bar), radius, radius);
  painter->restore();
}

// Of a vertical bar; there are no others.
QRectF ControlStyle::thumb(const QStyleOptionSlider& bar) const {
  const double inset = look_.px(kThumbInset);
  const double track = bar.rect.height() - 2 * inset;
  const double page = std::max(1, bar.pageStep);
  const double range = std::max(1, bar.maximum - bar.minimum);
  const double least = std::min(look_.px(kLeastThumb) * 1.0, track);
  const double length = std::clamp(track * page / (range + page), least, track);
  const double top = (track - length) * (bar.sliderPosition - bar.minimum) / range;
  return {bar.rect.left() + inset, bar.rect.top() + inset + top, look_.px(kThumbWidth) * 1.0,
          length};
}

QRect ControlStyle::partOf(const QStyleOptionSlider& bar, SubControl part) const {
  QRect rect = bar.rect;
  const QRect slider = thumb(bar).toRect();
  const int inset = look_.px(kThumbInset);
  switch (part) {
    case SC_ScrollBarSlider:
      rect.setTop(slider.top());
      rect.setBottom(slider.bottom());
      return rect;
    case SC_ScrollBarSubPage:
      rect.setBottom(slider.top() - 1);
      return rect;
    case SC_ScrollBarAddPage:
      rect.setTop(slider.bottom() + 1);
      return rect;
    case SC_ScrollBarGroove:
      return rect.adjusted(0, inset, 0, -inset);
    default:
      return {};
  }
}

}  // namespace tollbeam
