#include "ui/Popover.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <utility>

#include "ui/PopoverPlacement.h"

namespace tollbeam {

namespace {

// From the release that closes the popover to the status item's own message, with a slow panel
// between them.
constexpr double kSameClickSeconds = 0.4;
// How far the pointer moves during one click.
constexpr int kSameClickPixels = 16;

QPoint cornerOfPrimaryScreen() {
  const QRect area = QGuiApplication::primaryScreen()->geometry();
  return {area.right(), area.top()};
}

// Under X11 the pointer is where the click was, on every desktop; what panels send is not always.
// Elsewhere programs do not know the pointer.
QPoint anchorOf(ClickPosition position, std::optional<QPoint> last) {
  const bool pointerIsKnown = QGuiApplication::platformName() == QStringLiteral("xcb") &&
                              qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
  if (position.known && pointerIsKnown) return QCursor::pos();
  const bool plausible = position.known && (position.x != 0 || position.y != 0);
  if (plausible) {
    const qreal ratio = QGuiApplication::primaryScreen()->devicePixelRatio();
    return {qRound(position.x / ratio), qRound(position.y / ratio)};
  }
  return last.value_or(cornerOfPrimaryScreen());
}

}  // namespace

Popover::Popover(OutsideClicks& outsideClicks, const Clock& clock, QWidget* view)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      outsideClicks_(outsideClicks),
      clock_(clock) {
  setWindowTitle(QStringLiteral("Tollbeam"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->addWidget(view);
}

void Popover::showAt(ClickPosition position) {
  anchor_ = anchorOf(position, anchor_);
  pressedOutside_ = false;
  clicks_ = outsideClicks_.observe([this](OutsideClicks::Button button) { onButton(button); });
  layout()->activate();
  place();
  show();
  raise();
  activateWindow();
}

bool Popover::takeClosingClick() {
  const double ago = clock_.now() - std::exchange(closedByClick_, Date::distantPast());
  const int away = (QCursor::pos() - closedAt_).manhattanLength();
  return ago >= 0 && ago < kSameClickSeconds && away <= kSameClickPixels;
}

bool Popover::event(QEvent* event) {
  // A list that a control of ours opened takes the activation too, and is no other window.
  if (event->type() == QEvent::WindowDeactivate && isVisible() &&
      !QApplication::activePopupWidget()) {
    closeForAClick();
  }
  return QWidget::event(event);
}

void Popover::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

void Popover::hideEvent(QHideEvent* event) {
  clicks_.reset();
  QWidget::hideEvent(event);
}

void Popover::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (isVisible()) place();
}

void Popover::onButton(OutsideClicks::Button button) {
  if (button == OutsideClicks::Button::pressed) {
    const QPoint at = QCursor::pos();
    pressedOutside_ = !frameGeometry().contains(at) && !QApplication::activePopupWidget();
  } else if (pressedOutside_) {
    // At the release, because panels tell of a click on the item at the release.
    closeForAClick();
  }
}

void Popover::closeForAClick() {
  closedByClick_ = clock_.now();
  closedAt_ = QCursor::pos();
  close();
}

void Popover::place() {
  const QScreen* screen = QGuiApplication::screenAt(*anchor_);
  if (!screen) screen = QGuiApplication::primaryScreen();
  move(popoverPosition(*anchor_, screen->geometry(), screen->availableGeometry(), size()));
}

}  // namespace tollbeam
