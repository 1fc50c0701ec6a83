// Hints that a panel may have changed its colours without telling its items: xfce's dark-mode
// switch, LXQt's theme. Only hints; whoever hears one looks at the panel.
#pragma once

#include <QFileSystemWatcher>
#include <QObject>

#include "platform/freedesktop/bus/Bus.h"
#include "platform/freedesktop/statusbar/sni/StatusHost.h"

namespace tollbeam {

class PanelThemeWatch : public QObject {
  Q_OBJECT

 public:
  /// `bus` outlives this object.
  explicit PanelThemeWatch(Bus& bus, QObject* parent = nullptr);

  /// Listens for the hints of this panel only.
  void follow(StatusHost host);

 Q_SIGNALS:
  void maybeChanged();

 private:
  void followXfce(bool yes);
  void followLxqt(bool yes);

  Bus& bus_;
  QFileSystemWatcher files_;
  bool xfce_ = false;
};

}  // namespace tollbeam
