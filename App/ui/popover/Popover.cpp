#include "ui/popover/Popover.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "ui/controls/Accessibility.h"
#include "ui/popover/PopoverPlacement.h"

namespace tollbeam {

namespace {

// Allows for a slow panel between the release that closes the popover and the report of the click.
constexpr double kSameClickSeconds = 0.4;
// How far the pointer may move during one click.
constexpr int kSameClickPixels = 16;

QPoint cornerOfPrimaryScreen() {
  const QRect area = QGuiApplication::primaryScreen()->geometry();
  return {area.right(), area.top()};
}

// The part of the shadow inside the work area: window managers push windows back that extend beyond
// it, and panels must not be darkened.
QMargins within(const QRect& area, const QRect& body, const QMargins& wanted) {
  return {std::clamp(body.left() - area.left(), 0, wanted.left()),
          std::clamp(body.top() - area.top(), 0, wanted.top()),
          std::clamp(area.right() - body.right(), 0, wanted.right()),
          std::clamp(area.bottom() - body.bottom(), 0, wanted.bottom())};
}

}  // namespace

Popover::Popover(OutsideClicks& outsideClicks, Compositor& compositor, const Clock& clock,
                 const Style& style, QWidget* view)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      outsideClicks_(outsideClicks),
      compositor_(compositor),
      clock_(clock),
      style_(style),
      view_(view),
      scroll_(new ScrollArea(style, this)) {
  // Screen readers read out a dialog's texts when it opens.
  setAccessibleRole(*this, QAccessible::Dialog);
  setWindowTitle(QStringLiteral("Tollbeam"));
  scroll_->setPage(view);
  view_->installEventFilter(this);
  connect(&style_, &Style::changed, this, [this] { update(); });
}

void Popover::showAt(std::optional<ClickPosition> position) {
  if (position) anchor_ = QPoint(position->x, position->y);
  if (!anchor_) anchor_ = cornerOfPrimaryScreen();
  pressedOutside_ = false;
  clicks_ = outsideClicks_.observe([this](OutsideClicks::Button button) { onButton(button); });
  adaptToCompositor();
  Q_EMIT aboutToShow();
  scroll_->verticalScrollBar()->setValue(0);
  // The Tab key then goes to the first control.
  view_->setFocus(Qt::OtherFocusReason);
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
  // A list that one of our controls has opened also takes the activation.
  if (event->type() == QEvent::WindowDeactivate && isVisible() &&
      !QApplication::activePopupWidget()) {
    closeForClick();
  }
  return QWidget::event(event);
}

bool Popover::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_ && event->type() == QEvent::LayoutRequest && isVisible()) place();
  return QWidget::eventFilter(watched, event);
}

void Popover::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const Colours& colours = style_.colours();
  const bool blends = testAttribute(Qt::WA_TranslucentBackground);
  const double radius = blends ? style_.px(kPopoverRadius) : 0;
  const QRect body = this->body();
  const int corner = static_cast<int>(radius) + 1;
  if (body.adjusted(corner, 1, -corner, -1).contains(event->rect())) {
    painter.fillRect(event->rect(), colours.surface);
    return;
  }
  if (!shadowMargins_.isNull()) shadow_.paint(painter, body, event->rect(), style_);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours.surface);
  painter.drawRoundedRect(body, radius, radius);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(colours.edge, 1));
  painter.drawRoundedRect(QRectF(body).adjusted(0.5, 0.5, -0.5, -0.5), std::max(0.0, radius - 0.5),
                          std::max(0.0, radius - 0.5));
}

void Popover::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

void Popover::mousePressEvent(QMouseEvent* event) {
  // Some systems deliver clicks on the shadow to us; they count as clicks elsewhere.
  if (!body().contains(event->position().toPoint())) closeForClick();
}

// Here the view's parts have had their show events, and nothing is on the screen yet.
void Popover::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  placed_ = QRect();
  place();
}

void Popover::hideEvent(QHideEvent* event) {
  clicks_.reset();
  QWidget::hideEvent(event);
}

void Popover::onButton(OutsideClicks::Button button) {
  if (button == OutsideClicks::Button::pressed) {
    const QPoint at = QCursor::pos();
    pressedOutside_ = !body().translated(pos()).contains(at) && !QApplication::activePopupWidget();
  } else if (pressedOutside_) {
    // At the release, because panels report a click on the item at its release.
    closeForClick();
  }
}

void Popover::closeForClick() {
  closedByClick_ = clock_.now();
  closedAt_ = QCursor::pos();
  close();
}

// A native window cannot change its transparency, so it is created again, which is cheap and rare.
void Popover::adaptToCompositor() {
  const bool blends = compositor_.isRunning();
  if (isVisible() || blends == testAttribute(Qt::WA_TranslucentBackground)) return;
  destroy();
  setAttribute(Qt::WA_TranslucentBackground, blends);
  setAttribute(Qt::WA_NoSystemBackground, blends);
}

// Sets size, place and shadow in one step, so that no intermediate state shows.
void Popover::place() {
  const QScreen* screen = QGuiApplication::screenAt(*anchor_);
  if (!screen) screen = QGuiApplication::primaryScreen();
  const QRect area = screen->availableGeometry();
  const int distance = style_.px(kPopoverDistance);
  const QSize room = area.size() - 2 * QSize(distance, distance);

  QSize page = view_->sizeHint();
  page.setWidth(std::min(page.width(), room.width()));
  if (view_->hasHeightForWidth()) page.setHeight(view_->heightForWidth(page.width()));
  const QSize size = page.boundedTo(room);
  const QRect body(popoverPosition(*anchor_, screen->geometry(), area, size, distance), size);
  const QMargins margins = testAttribute(Qt::WA_TranslucentBackground)
                               ? within(area, body, Shadow::reach(style_))
                               : QMargins();
  const QRect window = body.marginsAdded(margins);
  if (window == placed_ && margins == shadowMargins_ && page == view_->size()) return;
  placed_ = window;
  shadowMargins_ = margins;

  // A fixed size keeps tiling window managers from arranging the window.
  setMinimumSize(0, 0);
  setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  setGeometry(window);
  setFixedSize(window.size());
  scroll_->setGeometry(this->body());
  view_->resize(page);

  // QWidget's own id may be that of a window that has been closed since.
  const WId number = windowHandle() ? windowHandle()->winId() : winId();
  const double ratio = screen->devicePixelRatio();
  const auto pixels = [ratio](int length) { return qRound(length * ratio); };
  compositor_.setShadow(number, {.left = pixels(margins.left()),
                                 .top = pixels(margins.top()),
                                 .right = pixels(margins.right()),
                                 .bottom = pixels(margins.bottom()),
                                 .bodyWidth = pixels(size.width()),
                                 .bodyHeight = pixels(size.height())});
}

}  // namespace tollbeam
