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

// Shadow only falls on the work area: window managers push back what reaches out of it, and panels
// are not to be darkened.
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
  // Its texts are read out when it opens.
  setAccessibleRole(*this, QAccessible::Dialog);
  setWindowTitle(QStringLiteral("Tollbeam"));
  scroll_->setPage(view);
  view_->installEventFilter(this);
  connect(&style_, &Style::changed, this, [this] { update(); });
}

void Popover::showAt(ClickPosition position) {
  anchor_ = anchorOf(position, anchor_);
  pressedOutside_ = false;
  clicks_ = outsideClicks_.observe([this](OutsideClicks::Button button) { onButton(button); });
  followCompositor();
  Q_EMIT aboutToShow();
  scroll_->verticalScrollBar()->setValue(0);
  // The keyboard begins before the first control.
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
  // A list that a control of ours opened takes the activation too, and is no other window.
  if (event->type() == QEvent::WindowDeactivate && isVisible() &&
      !QApplication::activePopupWidget()) {
    closeForAClick();
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
  // Where a click does not fall through the shadow, it is one elsewhere all the same.
  if (!body().contains(event->position().toPoint())) closeForAClick();
}

// By now the view's parts have heard that they are shown, and nothing is on the screen yet.
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
    // At the release, because panels tell of a click on the item at the release.
    closeForAClick();
  }
}

void Popover::closeForAClick() {
  closedByClick_ = clock_.now();
  closedAt_ = QCursor::pos();
  close();
}

// A window cannot become transparent: it is made anew, which is cheap and rare.
void Popover::followCompositor() {
  const bool blends = compositor_.isRunning();
  if (isVisible() || blends == testAttribute(Qt::WA_TranslucentBackground)) return;
  destroy();
  setAttribute(Qt::WA_TranslucentBackground, blends);
  setAttribute(Qt::WA_NoSystemBackground, blends);
}

// Size, place and shadow in one step, so that nothing is to be seen between them.
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

  // Tiling window managers leave windows of a fixed size alone.
  setMinimumSize(0, 0);
  setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  setGeometry(window);
  setFixedSize(window.size());
  scroll_->setGeometry(this->body());
  view_->resize(page);

  // The toolkit's own number may be that of a window that was closed since.
  const WId number = windowHandle() ? windowHandle()->winId() : winId();
  const double ratio = screen->devicePixelRatio();
  const auto pixels = [ratio](int length) { return qRound(length * ratio); };
  const QMargins& m = shadowMargins_;
  compositor_.setShadow(number, {.left = pixels(m.left()),
                                 .top = pixels(m.top()),
                                 .right = pixels(m.right()),
                                 .bottom = pixels(m.bottom()),
                                 .bodyWidth = pixels(size.width()),
                                 .bodyHeight = pixels(size.height())});
}

}  // namespace tollbeam
