#include "platform/freedesktop/statusbar/PanelThemeWatch.h"

#include <QStandardPaths>

namespace tollbeam {

PanelThemeWatch::PanelThemeWatch(Bus& bus) {
  // The panel's own switches, and the desktop's theme.
  for (const char* channel : {"xfce4-panel", "xsettings"})
    bus.listen(QStringLiteral("/org/xfce/Xfconf"), QStringLiteral("org.xfce.Xfconf"),
               QStringLiteral("PropertyChanged"), {QLatin1String(channel)}, this,
               SLOT(onXfceSetting()));
}

void PanelThemeWatch::follow(StatusHost host) {
  host_ = host;
  files_.clear();
  if (host != StatusHost::Lxqt) return;
  const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
  for (const char* name : {"/lxqt/lxqt.conf", "/lxqt/panel.conf"})
    files_.emplace_back(folder.toStdString() + name, [this] { Q_EMIT maybeChanged(); });
}

void PanelThemeWatch::onXfceSetting() {
  if (host_ == StatusHost::Xfce) Q_EMIT maybeChanged();
}

}  // namespace tollbeam
