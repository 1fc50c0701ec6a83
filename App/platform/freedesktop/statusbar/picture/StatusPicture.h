// Symbol and text as one picture, for the hosts that draw no text of their own. Digits stand in
// cells of equal width, so that the item does not jitter while the minutes run.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

#include "resources/Symbols.h"

namespace tollbeam {

/// All lengths in device pixels.
struct StatusPicture {
  /// Empty or unknown: no symbol.
  QString symbol;
  QString text;
  QFont font;
  QColor colour = Qt::black;
  int height = 22;
  /// Device pixels to a logical one; scales the gap.
  double scale = 1;

  /// How wide the picture is when nothing is left out.
  [[nodiscard]] int width(const Symbols& symbols) const;

  /// Premultiplied, transparent around. A width below width() leaves the text out.
  [[nodiscard]] QImage paint(Symbols& symbols, int width) const;
};

/// The system's font at its size on the main screen, in device pixels.
[[nodiscard]] QFont statusFont();
/// Device pixels to a logical pixel on the main screen.
[[nodiscard]] double statusScale();

/// What stands out on `background`.
[[nodiscard]] QColor colourOn(const QColor& background);
/// For a panel that we know nothing of but that it is dark.
[[nodiscard]] QColor colourOnDark();

}  // namespace tollbeam
