#include "platform/freedesktop/statusbar/xembed/XEmbedIcon.h"

#include <QApplication>
#include <QPalette>
#include <QScreen>
#include <QTextDocument>
#include <QToolTip>
#include <chrono>
#include <cmath>
#include <utility>

#include "colour/Contrast.h"
#include "platform/freedesktop/statusbar/xembed/PanelColour.h"

namespace tollbeam {
namespace {

using namespace std::chrono_literals;

// Long enough for a panel that is busy starting, short enough that the user sees an item soon.
constexpr auto kDockTimeout = 3s;
// A panel usually resizes a window a few milliseconds after the request. After this long one that
// has not is drawn without text; and one that has (xfce) may have lost what was drawn while it was
// still moving things, so it is drawn once more.
constexpr auto kSettling = 250ms;
// The delay of other items' tooltips.
constexpr auto kHovering = 500ms;

constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                  XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                  XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
constexpr int kUsualHeight = 22;
// More than any panel's item takes on the largest screen; a panel may give any size.
constexpr QSize kLargest(2048, 512);
constexpr double kReadable = 3;

template <typename Event>
const Event& as(const xcb_generic_event_t* event) {
  return *reinterpret_cast<const Event*>(event);
}

}  // namespace

XEmbedIcon::XEmbedIcon(const XServer& server, const TrayOwner& tray, Symbols& symbols,
                       Handlers handlers)
    : server_(server), tray_(tray), symbols_(symbols), handlers_(std::move(handlers)) {
  const auto prepare = [this](QTimer& timer, std::chrono::milliseconds interval, auto action) {
    timer.setSingleShot(true);
    timer.setInterval(interval);
    timer.callOnTimeout(this, action);
  };
  prepare(dockTimeout_, kDockTimeout, [this] { giveUp(); });
  prepare(settling_, kSettling, [this] { paint(); });
  prepare(hovering_, kHovering, [this] { showToolTip(); });
  connect(&tray_, &TrayOwner::lookChanged, this, &XEmbedIcon::redraw);
}

XEmbedIcon::~XEmbedIcon() { leave(); }

void XEmbedIcon::dock() {
  if (window_) return;
  QCoreApplication::instance()->installNativeEventFilter(this);
  QCoreApplication::instance()->installEventFilter(this);
  const int height = static_cast<int>(std::lround(kUsualHeight * statusScale()));
  size_ = QSize(height, height);
  window_.emplace(server_, tray_.visual(), height, kEvents);
  askForWidth();
  window_->askForPlace(tray_.window());
  dockTimeout_.start();
}

void XEmbedIcon::leave() {
  if (!window_) return;
  docked_ = false;
  dockTimeout_.stop();
  settling_.stop();
  hideToolTip();
  window_.reset();
  if (auto* app = QCoreApplication::instance()) {
    app->removeNativeEventFilter(this);
    app->removeEventFilter(this);
  }
}

void XEmbedIcon::giveUp() {
  leave();
  Q_EMIT refused();
}

void XEmbedIcon::setContent(const QString& symbol, const QString& text, const QString& toolTip) {
  const bool same = symbol == symbol_ && text == text_;
  symbol_ = symbol;
  text_ = text;
  if (toolTip != toolTip_) {
    toolTip_ = toolTip;
    if (QToolTip::isVisible() && docked_) showToolTip();
  }
  if (!same && window_) askForWidth();
}

// Without its colour, which is read from the panel.
StatusPicture XEmbedIcon::picture() const {
  return {.symbol = symbol_,
          .text = tray_.vertical() ? QString() : text_,
          .font = statusFont(),
          .height = size_.height(),
          .scale = statusScale()};
}

// The tray's own colour, unless the tray has not adapted it to its ground.
QColor XEmbedIcon::colour() const {
  const auto named = tray_.foreground();
  const auto behind = ground();
  if (named && (!behind || contrastRatio(*named, *behind) >= kReadable)) return *named;
  return behind ? colourOn(*behind) : QGuiApplication::palette().color(QPalette::WindowText);
}

std::optional<QColor> XEmbedIcon::ground() const {
  if (const auto behind = window_->ground(size_)) return behind;
  const auto place = server_.positionOf(window_->id());
  return place ? panelColour(server_, place) : std::nullopt;
}

void XEmbedIcon::redraw() {
  if (docked_) askForWidth();
}

// Asks the panel for the width of the picture, and draws it: at once where there is room for it,
// else when the panel has given more.
void XEmbedIcon::askForWidth() {
  const QSize wanted(picture().width(symbols_), size_.height());
  window_->askForSize(wanted);
  if (!docked_) {
    window_->resize(wanted);
    size_ = wanted;
  } else if (wanted.width() > size_.width()) {
    settling_.start();
  } else {
    paint();
  }
}

void XEmbedIcon::paint() {
  if (!docked_) return;
  auto shown = picture();
  shown.colour = colour();
  window_->draw(shown.paint(symbols_, size_.width()));
}

bool XEmbedIcon::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  if (watched == QCoreApplication::instance() &&
      (type == QEvent::ApplicationFontChange || type == QEvent::ApplicationPaletteChange))
    redraw();
  return false;
}

bool XEmbedIcon::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) {
  if (type != "xcb_generic_event_t" || !window_) return false;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  const auto id = window_->id();
  switch (event->response_type & 0x7f) {
    case XCB_REPARENT_NOTIFY:
      if (const auto& e = as<xcb_reparent_notify_event_t>(event); e.window == id)
        onReparented(e.parent);
      break;
    case XCB_DESTROY_NOTIFY:
      if (as<xcb_destroy_notify_event_t>(event).window == id) giveUp();
      break;
    case XCB_CONFIGURE_NOTIFY:
      if (const auto& e = as<xcb_configure_notify_event_t>(event); e.window == id)
        onConfigured({e.width, e.height});
      break;
    case XCB_EXPOSE:
      if (const auto& e = as<xcb_expose_event_t>(event); e.window == id && e.count == 0) paint();
      break;
    case XCB_BUTTON_PRESS:
      if (const auto& e = as<xcb_button_press_event_t>(event); e.event == id) {
        hideToolTip();
        if (e.detail == XCB_BUTTON_INDEX_3) handlers_.contextMenu({e.root_x, e.root_y});
      }
      break;
    case XCB_BUTTON_RELEASE:
      if (const auto& e = as<xcb_button_release_event_t>(event);
          e.event == id && e.detail == XCB_BUTTON_INDEX_1 &&
          QRect(QPoint(0, 0), size_).contains(e.event_x, e.event_y))
        handlers_.activate({e.root_x, e.root_y});
      break;
    case XCB_ENTER_NOTIFY:
      if (as<xcb_enter_notify_event_t>(event).event == id) hovering_.start();
      break;
    case XCB_LEAVE_NOTIFY:
      if (as<xcb_leave_notify_event_t>(event).event == id) hideToolTip();
      break;
    default:
      break;
  }
  return false;
}

void XEmbedIcon::onReparented(xcb_window_t parent) {
  if (parent == server_.root()) {
    giveUp();
  } else if (!docked_) {
    dockTimeout_.stop();
    docked_ = true;
    Q_EMIT docked();
    askForWidth();
  }
}

void XEmbedIcon::onConfigured(QSize given) {
  const QSize size = given.boundedTo(kLargest);
  if (size == size_ || !docked_) return;
  const auto before = std::exchange(size_, size);
  settling_.start();
  if (size.height() != before.height())
    askForWidth();
  else
    paint();
}

void XEmbedIcon::showToolTip() {
  const auto plain = Qt::mightBeRichText(toolTip_) ? toolTip_.toHtmlEscaped() : toolTip_;
  QToolTip::showText(logicalPosition(server_.pointer()), plain);
}

void XEmbedIcon::hideToolTip() {
  hovering_.stop();
  QToolTip::hideText();
}

QPoint logicalPosition(QPoint physical) {
  // Qt keeps each screen's corner in its place and scales its inside.
  for (const auto* screen : QGuiApplication::screens()) {
    const double ratio = screen->devicePixelRatio();
    const auto corner = screen->geometry().topLeft();
    const QRect area(corner, screen->geometry().size() * ratio);
    if (area.contains(physical)) return corner + (physical - corner) / ratio;
  }
  return physical;
}

}  // namespace tollbeam
