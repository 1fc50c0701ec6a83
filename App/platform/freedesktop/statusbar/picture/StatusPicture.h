// Symbol and text as one picture, for the hosts that draw no text of their own. Digits stand in
// cells of equal width, so that the item keeps its width while the minutes change.
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
  /// Device pixels to a logical pixel; scales the gaps.
  double scale = 1;

  /// The width of the picture with everything in it.
  [[nodiscard]] int width(const Symbols& symbols) const;

  /// Premultiplied, transparent around. The text is left out where `width` is too small for it.
  [[nodiscard]] QImage paint(Symbols& symbols, int width) const;
};

/// The system's font at its size on the main screen, in device pixels.
[[nodiscard]] QFont statusFont();
/// Device pixels to a logical pixel on the main screen.
[[nodiscard]] double statusScale();

/// For a panel of unknown but dark colour.
inline constexpr QColor kOnDarkPanel(0xec, 0xee, 0xf1);
/// The light or the dark colour of symbols, whichever has more contrast with `background`.
[[nodiscard]] QColor colourOn(const QColor& background);

}  // namespace tollbeam
