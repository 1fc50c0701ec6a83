// What every control does when the style changes: take the new font, lay itself out, repaint.
#pragma once

#include <QWidget>
#include <optional>

#include "ui/look/Style.h"

namespace tollbeam {

/// Gives `widget` the role's font, now and at each change of `style`. Without a role the font
/// stays.
void followStyle(QWidget& widget, const Style& style, std::optional<Role> role = {});

/// Gives `widget` a fixed size, measured at scale 1.
void fixSize(QWidget& widget, const Style& style, QSize size);

}  // namespace tollbeam
