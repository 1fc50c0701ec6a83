// Which panel shows the status item, and what it makes of one. The standard gives the hosts so much
// freedom that the same item is a blank square on one and an unreadable line on another. Every
// known difference is a row here; no other code asks for a desktop's name.
#pragma once

#include <QString>

namespace tollbeam {

enum class StatusHost { Gnome, Mate, Cinnamon, Waybar, Xfce, Lxqt, Plasma, Budgie, Cosmic, Other };

/// Which parts of an item's tooltip a host shows.
enum class ToolTipPlace { TitleAndDescription, AllInTitle, AllInDescription };

struct StatusHostTraits {
  /// Draws XAyatanaLabel beside the icon.
  bool label = false;
  /// Keeps the shape of a pixmap that is wider than high, so the text can be part of the picture.
  bool widePixmap = false;
  /// Recolours a symbolic icon that it finds through IconThemePath.
  bool recoloursIcon = false;
  /// Its panel is dark whatever the application's palette is.
  bool darkPanel = false;
  /// Gives a wide XEmbed window its full width, but an item on the bus only a square.
  bool prefersXEmbed = false;
  /// Gives the position of a click in the screen's coordinates.
  bool givesPosition = true;
  ToolTipPlace toolTip = ToolTipPlace::TitleAndDescription;
  /// Reads these as markup: a bare & empties the tooltip.
  bool titleIsMarkup = false;
  bool descriptionIsMarkup = false;
};

/// From the name of the process that owns the watcher (as the kernel keeps it: 15 characters), or
/// from XDG_CURRENT_DESKTOP where that process is unknown.
[[nodiscard]] StatusHost statusHostFor(const QString& process, const QString& currentDesktop);

[[nodiscard]] StatusHostTraits traitsOf(StatusHost host);

}  // namespace tollbeam
