// Follows org.kde.StatusNotifierWatcher, the desktop's list of status items: whether there is one,
// and which panel shows it. All asynchronous: a watcher that hangs costs nothing.
#pragma once

#include <QObject>

#include "platform/freedesktop/bus/ServiceOwner.h"
#include "platform/freedesktop/statusbar/sni/StatusHost.h"

namespace tollbeam {

class WatcherMonitor : public QObject {
  Q_OBJECT

 public:
  enum class Presence { NotYetKnown, Absent, Present };

  /// `bus` outlives this object.
  explicit WatcherMonitor(Bus& bus);

  [[nodiscard]] Presence presence() const { return presence_; }
  /// Other unless present.
  [[nodiscard]] StatusHost host() const { return host_; }

 Q_SIGNALS:
  /// The watcher came, went, or was replaced.
  void changed();
  /// A panel came to a watcher that was there before.
  void hostRegistered();

 private Q_SLOTS:
  void onHostRegistered();

 private:
  void identify();
  void settle(Presence presence, StatusHost host);

  Bus& bus_;
  ServiceOwner owner_;
  Presence presence_ = Presence::NotYetKnown;
  StatusHost host_ = StatusHost::Other;
};

}  // namespace tollbeam
