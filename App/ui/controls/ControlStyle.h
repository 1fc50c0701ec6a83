// How Qt's own controls look in our windows: their behaviour is Qt's, their colours and measures
// come from our style (`look`). It is set on single widgets, so that dialogs of the desktop keep
// the desktop's style.
#pragma once

#include <QProxyStyle>
#include <QStyleOptionSlider>

#include "ui/look/Style.h"

namespace tollbeam {

class ControlStyle final : public QProxyStyle {
  Q_OBJECT

 public:
  /// The one for this look, which owns it. A widget's children do not inherit it, and Qt does not
  /// lay the widget out again when the look changes.
  [[nodiscard]] static ControlStyle* of(const Style& look);

  using QProxyStyle::polish;
  void polish(QWidget* widget) override;

  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returned) const override;
  [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                     const QWidget* widget) const override;
  [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                     SubControl part, const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;

 private:
  explicit ControlStyle(const Style& look);

  [[nodiscard]] QRectF thumb(const QStyleOptionSlider& bar) const;
  [[nodiscard]] QRect partOf(const QStyleOptionSlider& bar, SubControl part) const;

  const Style& look_;
};

}  // namespace tollbeam
