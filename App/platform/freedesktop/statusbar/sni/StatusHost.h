// Which panel shows the status item, and what it makes of one. The standard leaves the hosts so
// much freedom that the same item is a blank square on one and an unreadable line on another; every
// difference that we meet is a row here, and nothing else asks for a desktop's name.
#pragma once

#include <QString>

namespace tollbeam {

enum class StatusHost { Gnome, Mate, Cinnamon, Waybar, Xfce, Lxqt, Plasma, Budgie, Cosmic, Other };

/// Where a host takes its bubble's text from.
enum class ToolTipPlace { TitleAndDescription, AllInTitle, AllInDescription };

struct StatusHostTraits {
  /// Draws XAyatanaLabel beside the icon.
  bool label = false;
  /// Draws a pixmap wider than high at its own shape, so the text can be part of the picture.
  bool widePixmap = false;
  /// Recolours a symbolic icon that it finds through IconThemePath.
  bool recoloursIcon = false;
  /// Its panel is dark whatever the application's palette says.
  bool darkPanel = false;
  /// Gives a wide XEmbed window its full width, and an item a square only.
  bool prefersXEmbed = false;
  /// Tells where it was clicked, in the screen's coordinates.
  bool tellsPosition = true;
  ToolTipPlace toolTip = ToolTipPlace::TitleAndDescription;
  /// Reads these as markup: a bare & empties the bubble.
  bool titleIsMarkup = false;
  bool descriptionIsMarkup = false;
};

/// From the name of the process that owns the watcher (as the kernel keeps it: 15 characters), and
/// where that is nobody we know from XDG_CURRENT_DESKTOP.
[[nodiscard]] StatusHost statusHostFor(const QString& process, const QString& currentDesktop);

[[nodiscard]] StatusHostTraits traitsOf(StatusHost host);

}  // namespace tollbeam
