#include "platform/freedesktop/statusbar/FreedesktopStatusBar.h"

#include <QDir>

#include "platform/freedesktop/statusbar/FreedesktopStatusItem.h"

namespace tollbeam {

FreedesktopStatusBar::FreedesktopStatusBar(QDBusConnection sessionBus, QString sessionBusAddress,
                                           QString iconThemePath)
    : sessionBus_(std::move(sessionBus)),
      sessionBusAddress_(std::move(sessionBusAddress)),
      iconThemePath_(std::move(iconThemePath)) {
  // A panel that is sent to a missing folder shows a broken image.
  if (!QDir(iconThemePath_).exists()) iconThemePath_.clear();
}

std::unique_ptr<StatusItem> FreedesktopStatusBar::createStatusItem(StatusItem::Actions actions) {
  return std::make_unique<FreedesktopStatusItem>(sessionBus_, sessionBusAddress_, iconThemePath_,
                                                 std::move(actions));
}

}  // namespace tollbeam
