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
  connect(&style_, &Style::changed, this, &SettingsWindow::fit);
  fit();
  const QRect area = screen()->availableGeometry();
  move(area.center() - QRect({}, size()).center());
}

void SettingsWindow::bringToFront() {
  // On another workspace or minimised, a window counts as shown but is not mapped, and asking for
  // the keyboard would wait until it is. Shown anew, it comes to where the user is.
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
  // What the window manager has put around it counts, too.
  const QSize frame = frameGeometry().size() - size();
  setFixedSize(QSize(style_.px(kWidth), style_.px(kHeight)).boundedTo(area.size() - frame));
}

// The window manager's frame is known only after the window was shown, and its moving tells.
void SettingsWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  fit();
}

void SettingsWindow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  fit();
}

}  // namespace tollbeam
