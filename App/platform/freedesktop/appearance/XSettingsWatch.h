// The settings of an X11 desktop's settings daemon, kept up to date. They are kept until another
// daemon publishes its own, so that a restart does not make programs flicker. Main thread only.
#pragma once

#include <QObject>

#include "platform/freedesktop/x11/ManagerSelection.h"
#include "values/Value.h"

namespace tollbeam {

class XSettingsWatch : public QObject {
  Q_OBJECT

 public:
  explicit XSettingsWatch(const XServer& server);

  /// Empty until a daemon has published.
  [[nodiscard]] const Dictionary& settings() const { return settings_; }

 Q_SIGNALS:
  void changed();

 private:
  void read();

  XServer server_;
  xcb_atom_t property_;
  ManagerSelection daemon_;
  Dictionary settings_;
};

}  // namespace tollbeam
