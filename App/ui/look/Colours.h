// Every colour that Tollbeam paints with. All of them come from the desktop's palette; only green,
// orange and red are ours, and they give way when the desktop's background asks for it.
#pragma once

#include <QColor>
#include <QPalette>

namespace tollbeam {

/// What words are written in.
enum class Ink { primary, secondary, link, green, orange, red };

/// What ring and bar are painted in.
enum class Tint { accent, green, orange, red };

struct Colours {
  bool dark = false;
  bool highContrast = false;

  QColor surface;    ///< popover and windows
  QColor card;       ///< cards and open menus, on the surface
  QColor primary;    ///< text
  QColor secondary;  ///< text of the second rank
  QColor accent;     ///< graphics in the user's accent colour
  QColor onAccent;   ///< text on the accent
  QColor link;       ///< words that can be clicked, also on the banner
  QColor greenText, orangeText, redText;
  QColor green, orange, red;  ///< graphics: ring, bar

  // Those below are partly transparent, so that they fit the surface and cards alike.
  QColor track;     ///< what ring and bar run on
  QColor hairline;  ///< dividers, outlines of cards, rows of the chart's grid
  QColor gridLine;  ///< the chart's vertical lines
  QColor edge;      ///< the popover's outline
  QColor fill;      ///< a control at rest
  QColor fillHover;
  QColor fillPressed;
  QColor banner;  ///< ground of the snooze banner
  QColor scrollBar;
  QColor outline;  ///< around every control when the user asked for contrast, else transparent

  QColor switchOff;  ///< ground of a switch that is off
  QColor switchOffOutline;
  QColor switchThumb;  ///< thumb of a switch that is off
  QColor switchThumbOn;
  QColor segment;  ///< ground of a picker's chosen segment
  QColor segmentText;

  [[nodiscard]] QColor ink(Ink role) const;
  [[nodiscard]] QColor graphics(Tint tint) const;

  bool operator==(const Colours&) const = default;
};

/// `moreContrast`: the user asked for it. A palette that is itself one of high contrast (its text
/// at least 20:1) asks too.
[[nodiscard]] Colours coloursOf(const QPalette& palette, bool moreContrast);

}  // namespace tollbeam
