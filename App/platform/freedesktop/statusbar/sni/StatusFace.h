// What one host is shown of the item's content: a pure translation, so that every host's rules can
// be tested without it.
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

#include "platform/StatusBar.h"
#include "platform/freedesktop/statusbar/sni/SniTypes.h"
#include "platform/freedesktop/statusbar/sni/StatusHost.h"
#include "resources/Symbols.h"

namespace tollbeam {

struct StatusFace {
  /// Empty where the picture says more than a symbolic icon could.
  QString iconName;
  QString iconThemePath;
  SniPixmaps icon;
  QString accessibleDescription;
  SniToolTip toolTip;
  QString label;

  friend bool operator==(const StatusFace&, const StatusFace&) = default;
};

/// The first name that exists; empty when none does.
[[nodiscard]] QString firstSymbol(const StatusItemContent& content, const Symbols& symbols);

/// Text beside the symbol, without the leading space; digits are padded where the host draws it.
[[nodiscard]] QString besideText(const StatusItemContent& content);

/// `iconThemePath` may be empty: then there are pixmaps only.
[[nodiscard]] StatusFace faceFor(const StatusItemContent& content, const StatusHostTraits& traits,
                                 const QString& iconThemePath, const QColor& colour,
                                 Symbols& symbols);

}  // namespace tollbeam
