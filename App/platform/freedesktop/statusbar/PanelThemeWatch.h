// Hints that a panel may have changed its colours, which no panel announces to its items: xfce's
// dark-mode switch, LXQt's theme. A hint is only a reason to look at the panel again.
#pragma once

#include <QObject>
#include <list>

#include "platform/freedesktop/bus/Bus.h"
#include "platform/freedesktop/files/FileWatch.h"
#include "platform/freedesktop/statusbar/sni/StatusHost.h"

namespace tollbeam {

class PanelThemeWatch : public QObject {
  Q_OBJECT

 public:
  /// `bus` outlives this object.
  explicit PanelThemeWatch(Bus& bus);

  /// From now on reports the hints of this panel only.
  void follow(StatusHost host);

 Q_SIGNALS:
  void maybeChanged();

 private Q_SLOTS:
  void onXfceSetting();

 private:
  StatusHost host_ = StatusHost::Other;
  std::list<FileWatch> files_;
};

}  // namespace tollbeam
