// Every colour that Tollbeam paints with. All come from the desktop's palette except green, orange
// and red, which are ours and are adjusted where they would not stand out from the background.
#pragma once

#include <QColor>
#include <QPalette>

namespace tollbeam {

/// Colours of text.
enum class Ink { primary, secondary, link, green, orange, red };

/// Colours of the ring and the bar.
enum class Tint { accent, green, orange, red };

struct Colours {
  bool dark = false;
  bool highContrast = false;

  QColor surface;    ///< popover and windows
  QColor card;       ///< cards and open menus, on the surface
  QColor primary;    ///< text
  QColor secondary;  ///< less important text
  QColor accent;     ///< graphics in the user's accent colour
  QColor onAccent;   ///< text on the accent
  QColor link;       ///< text that can be clicked, also on the banner
  QColor greenText, orangeText, redText;
  QColor green, orange, red;  ///< graphics: ring, bar

  // Partly transparent, to suit both the surface and cards.
  QColor track;     ///< the unfilled part of ring and bar
  QColor hairline;  ///< dividers, outlines of cards, rows of the chart's grid
  QColor gridLine;  ///< the chart's vertical lines
  QColor edge;      ///< the popover's outline
  QColor fill;      ///< a control at rest
  QColor fillHover;
  QColor fillPressed;
  QColor banner;  ///< background of the snooze banner
  QColor scrollBar;
  QColor outline;  ///< of every control under high contrast, else transparent

  QColor switchOff;  ///< background of a switch that is off
  QColor switchOffOutline;
  QColor switchThumb;  ///< thumb of a switch that is off
  QColor switchThumbOn;
  QColor segment;  ///< background of a picker's chosen segment
  QColor segmentText;

  [[nodiscard]] QColor ink(Ink role) const;
  [[nodiscard]] QColor graphics(Tint tint) const;

  bool operator==(const Colours&) const = default;
};

/// `moreContrast`: the user has turned on high contrast. A palette whose text has a contrast of at
/// least 20:1 turns it on, too.
[[nodiscard]] Colours coloursOf(const QPalette& palette, bool moreContrast);

}  // namespace tollbeam
