// The settings of an X11 desktop's settings daemon, kept up to date. What the last daemon said
// holds until another one speaks, so that its restart does not make programs flicker. Main thread
// only.
#pragma once

#include <QObject>

#include "platform/freedesktop/x11/ManagerSelection.h"
#include "values/Value.h"

namespace tollbeam {

class XSettingsWatch : public QObject {
  Q_OBJECT

 public:
  explicit XSettingsWatch(const XServer& server, QObject* parent = nullptr);

  /// Empty until a daemon has spoken.
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
