#include "ui/settings/SettingsWindow.h"

#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

namespace tollbeam {

namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 720;

}  // namespace

SettingsWindow::SettingsWindow(const Style& style, QWidget* view)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      style_(style) {
  setWindowTitle(tr("Tollbeam Settings"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(view);
  style_.follow(this, [this] { fit(); });
  const QRect area = screen()->availableGeometry();
  move(area.center() - QRect({}, size()).center());
}

void SettingsWindow::bringToFront() {
  // A window that is minimised or on another workspace is visible to Qt but not mapped, and cannot
  // become active. Shown again, it appears on the current workspace.
  if (isVisible() && (isMinimized() || !windowHandle()->isExposed())) {
    const QPoint place = pos();
    hide();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    move(place);
  }
  show();
  raise();
  activateWindow();
}

void SettingsWindow::fit() {
  const QRect area = screen()->availableGeometry();
  // The window manager's frame must fit, too.
  const QSize frame = frameGeometry().size() - size();
  setFixedSize(QSize(style_.px(kWidth), style_.px(kHeight)).boundedTo(area.size() - frame));
}

// The window manager adds its frame after the window is shown, which moves the window.
void SettingsWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  fit();
}

void SettingsWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  fit();
}

}  // namespace tollbeam
