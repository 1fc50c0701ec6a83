// The status item on a freedesktop system: an entry of the desktop's status-item list, or a window
// in its X11 tray where only that has room for text; never both. It waits for a panel for as long
// as it takes and moves when another panel comes.
#pragma once

#include <QString>
#include <memory>

#include "platform/StatusBar.h"
#include "platform/freedesktop/bus/Bus.h"

namespace tollbeam {

class FreedesktopStatusBar : public StatusBar {
 public:
  /// `sessionBus` outlives this object and its items. `iconThemePath` is a folder that holds
  /// "hicolor/22x22/status/tollbeam-battery-75-symbolic.svg" and its like, also in 16 and 24
  /// pixels; where it is empty or missing, panels get pictures only.
  explicit FreedesktopStatusBar(Bus& sessionBus, QString iconThemePath = {});

  [[nodiscard]] std::unique_ptr<StatusItem> createStatusItem(StatusItem::Actions actions) override;

 private:
  Bus& sessionBus_;
  QString iconThemePath_;
};

}  // namespace tollbeam
