#include "platform/freedesktop/appearance/LiveScale.h"

#include <QApplication>
#include <QBackingStore>
#include <QScreen>
#include <QWidget>
#include <memory>

namespace tollbeam {
namespace {

void renew(QWidget& window) {
  auto* store = window.backingStore();
  if (store == nullptr) return;
  const bool shown = window.isVisible();
  // A window gets its size in dots when it appears.
  window.hide();
  // No window has this size, so the next painting makes the store anew, at the new scale.
  store->resize(QSize(1, 1));
  // A popover gets its place and its clicks from the code that opens it.
  if (shown && window.windowType() == Qt::Window) window.show();
}

}  // namespace

LiveScale::LiveScale() {
  for (auto* screen : QGuiApplication::screens()) watch(screen);
  connect(qApp, &QGuiApplication::screenAdded, this, &LiveScale::watch);
}

void LiveScale::watch(QScreen* screen) {
  const auto follow = [screen, ratio = std::make_shared<qreal>(screen->devicePixelRatio())] {
    if (screen->devicePixelRatio() == *ratio) return;
    *ratio = screen->devicePixelRatio();
    for (auto* window : QApplication::topLevelWidgets()) renew(*window);
  };
  // Which of the two reports a new ratio depends on the version of Qt.
  connect(screen, &QScreen::logicalDotsPerInchChanged, this, follow);
  connect(screen, &QScreen::geometryChanged, this, follow);
}

}  // namespace tollbeam
