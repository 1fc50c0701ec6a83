#include "platform/freedesktop/statusbar/sni/StatusHost.h"

#include <QStringList>
#include <array>

namespace tollbeam {
namespace {

struct Known {
  const char* name;
  StatusHost host;
};

constexpr std::array kProcesses{
    Known{"xfce4-panel", StatusHost::Xfce},       Known{"lxqt-panel", StatusHost::Lxqt},
    Known{"notification-ar", StatusHost::Mate},   Known{"kded", StatusHost::Plasma},
    Known{"gnome-shell", StatusHost::Gnome},      Known{"xapp-sn-watcher", StatusHost::Cinnamon},
    Known{"waybar", StatusHost::Waybar},          Known{"budgie-panel", StatusHost::Budgie},
    Known{"cosmic-applet-s", StatusHost::Cosmic},
};

constexpr std::array kDesktops{
    Known{"XFCE", StatusHost::Xfce},           Known{"LXQt", StatusHost::Lxqt},
    Known{"MATE", StatusHost::Mate},           Known{"KDE", StatusHost::Plasma},
    Known{"Budgie", StatusHost::Budgie},       Known{"GNOME", StatusHost::Gnome},
    Known{"X-Cinnamon", StatusHost::Cinnamon}, Known{"COSMIC", StatusHost::Cosmic},
};

}  // namespace

StatusHost statusHostFor(const QString& process, const QString& currentDesktop) {
  auto host = StatusHost::Other;
  for (const auto& known : kProcesses) {
    if (process.startsWith(QLatin1String(known.name))) host = known.host;
  }
  // xfce4-panel runs each plugin in a process of its own, named "panel-3-systray".
  if (process.startsWith(QLatin1String("panel-")) && process.contains(QLatin1String("-syst")))
    host = StatusHost::Xfce;
  // xapp's watcher also serves MATE and Xfce panels that show items through it.
  if (host != StatusHost::Other && host != StatusHost::Cinnamon) return host;

  const auto names = currentDesktop.split(QLatin1Char(':'), Qt::SkipEmptyParts);
  for (const auto& known : kDesktops) {
    if (names.contains(QLatin1String(known.name), Qt::CaseInsensitive)) return known.host;
  }
  return host;
}

StatusHostTraits traitsOf(StatusHost host) {
  switch (host) {
    case StatusHost::Gnome:
      return {.label = true, .recoloursIcon = true, .darkPanel = true};
    case StatusHost::Mate:
      return {.label = true,
              .givesPosition = false,
              .titleIsMarkup = true,
              .descriptionIsMarkup = true};
    case StatusHost::Cinnamon:
      return {.widePixmap = true, .darkPanel = true};
    case StatusHost::Waybar:
      return {.widePixmap = true,
              .darkPanel = true,
              .givesPosition = false,
              .titleIsMarkup = true,
              .descriptionIsMarkup = true};
    case StatusHost::Xfce:
      return {.recoloursIcon = true,
              .prefersXEmbed = true,
              .titleIsMarkup = true,
              .descriptionIsMarkup = true};
    case StatusHost::Lxqt:
      return {.toolTip = ToolTipPlace::AllInTitle};
    case StatusHost::Plasma:
      return {.recoloursIcon = true};
    case StatusHost::Budgie:
      return {.recoloursIcon = true,
              .toolTip = ToolTipPlace::AllInDescription,
              .descriptionIsMarkup = true};
    case StatusHost::Cosmic:
      return {.recoloursIcon = true, .givesPosition = false};
    case StatusHost::Other:
      break;
  }
  return {.recoloursIcon = true, .descriptionIsMarkup = true};
}

}  // namespace tollbeam
