#include "ui/controls/FollowStyle.h"

namespace tollbeam {

void followStyle(QWidget& widget, const Style& style, std::optional<Role> role) {
  const auto restyle = [&widget, &style, role] {
    if (role) widget.setFont(style.font(*role));
    widget.updateGeometry();
    widget.update();
  };
  QObject::connect(&style, &Style::changed, &widget, restyle);
  restyle();
}

void fixSize(QWidget& widget, const Style& style, QSize size) {
  const auto restyle = [&widget, &style, size] {
    widget.setFixedSize(style.px(size.width()), style.px(size.height()));
    widget.update();
  };
  QObject::connect(&style, &Style::changed, &widget, restyle);
  restyle();
}

}  // namespace tollbeam
