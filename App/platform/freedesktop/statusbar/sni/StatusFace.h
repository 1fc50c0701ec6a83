// What one host shows of the item's content: a pure translation, so that every host's rules can be
// tested without it.
#pragma once

#include <QColor>
#include <QString>

#include "platform/StatusBar.h"
#include "platform/freedesktop/statusbar/sni/SniTypes.h"
#include "platform/freedesktop/statusbar/sni/StatusHost.h"
#include "resources/Symbols.h"

namespace tollbeam {

struct StatusFace {
  /// Empty where the host would not recolour a symbolic icon.
  QString iconName;
  QString iconThemePath;
  SniPixmaps icon;
  QString accessibleDescription;
  SniToolTip toolTip;
  QString label;
};

/// The first name that exists; empty when none does.
[[nodiscard]] QString firstSymbol(const StatusItemContent& content, const Symbols& symbols);

/// The text beside the symbol, without the leading space.
[[nodiscard]] QString besideText(const StatusItemContent& content);

/// With an empty `iconThemePath` there are pixmaps only, in `colour`.
[[nodiscard]] StatusFace faceFor(const StatusItemContent& content, const StatusHostTraits& traits,
                                 const QString& iconThemePath, const QColor& colour,
                                 Symbols& symbols);

}  // namespace tollbeam
