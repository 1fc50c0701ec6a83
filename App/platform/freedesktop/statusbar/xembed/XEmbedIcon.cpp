#include "platform/freedesktop/statusbar/xembed/XEmbedIcon.h"

#include <QApplication>
#include <QPalette>
#include <QScreen>
#include <QTextDocument>
#include <QToolTip>
#include <chrono>
#include <cmath>

#include "colour/Contrast.h"
#include "platform/freedesktop/statusbar/xembed/PanelColour.h"

namespace tollbeam {
namespace {

using namespace std::chrono_literals;

// Long enough for a panel that is busy starting, short enough that the user sees an item soon.
constexpr auto kPatience = 3s;
// A panel has given a window its new size a few milliseconds after the wish. One that will not is
// drawn without text after this; and one that has (xfce) may have missed what was drawn while it
// was still moving things, so it is drawn once more.
constexpr auto kSettling = 250ms;
// As long as other items of a panel take for theirs.
constexpr auto kHovering = 500ms;

constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                  XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                  XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW;
constexpr int kUsualHeight = 22;
// More than any panel's item takes on the largest screen; a panel may give any size.
constexpr QSize kLargest(2048, 512);
constexpr double kReadable = 3;

}  // namespace

XEmbedIcon::XEmbedIcon(const XServer& server, const TrayOwner& tray, Symbols& symbols,
                       Handlers handlers, QObject* parent)
    : QObject(parent),
      server_(server),
      tray_(tray),
      symbols_(symbols),
      handlers_(std::move(handlers)) {
  const auto prepare = [this](QTimer& timer, std::chrono::milliseconds interval, auto action) {
    timer.setSingleShot(true);
    timer.setInterval(interval);
    connect(&timer, &QTimer::timeout, this, action);
  };
  prepare(patience_, kPatience, [this] { giveUp(); });
  prepare(settling_, kSettling, [this] { paint(); });
  prepare(hovering_, kHovering, [this] { showToolTip(); });
  connect(&tray_, &TrayOwner::lookChanged, this, &XEmbedIcon::redraw);
}

XEmbedIcon::~XEmbedIcon() { leave(); }

void XEmbedIcon::dock() {
  if (state_ != State::Away) return;
  QCoreApplication::instance()->installNativeEventFilter(this);
  QCoreApplication::instance()->installEventFilter(this);
  const int height = static_cast<int>(std::lround(kUsualHeight * statusScale()));
  size_ = QSize(height, height);
  window_.emplace(server_, tray_.visual(), height, kEvents);
  canvas_.emplace(server_, window_->id(), tray_.visual());
  state_ = State::Asking;
  askForWidth();
  window_->askForPlace(tray_.window());
  patience_.start();
}

void XEmbedIcon::leave() {
  if (state_ == State::Away) return;
  state_ = State::Away;
  patience_.stop();
  settling_.stop();
  hideToolTip();
  canvas_.reset();
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
    if (QToolTip::isVisible() && state_ == State::Docked) showToolTip();
  }
  if (!same && state_ != State::Away) askForWidth();
}

// Without its colour, for which the panel has to be looked at.
StatusPicture XEmbedIcon::picture() const {
  return {.symbol = symbol_,
          .text = tray_.vertical() ? QString() : text_,
          .font = statusFont(),
          .height = size_.height(),
          .scale = statusScale()};
}

// The tray's own colour, unless it has forgotten to follow its ground.
QColor XEmbedIcon::colour() const {
  const auto told = tray_.foreground();
  const auto behind = ground();
  if (told && (!behind || contrastRatio(*told, *behind) >= kReadable)) return *told;
  return behind ? colourOn(*behind) : QGuiApplication::palette().color(QPalette::WindowText);
}

std::optional<QColor> XEmbedIcon::ground() const {
  if (state_ != State::Docked || !canvas_) return std::nullopt;
  if (const auto behind = canvas_->ground(size_)) return behind;
  auto* c = server_.connection();
  const auto place = xcbReply(xcb_translate_coordinates_reply(
      c, xcb_translate_coordinates(c, window_->id(), server_.root(), 0, 0), nullptr));
  if (!place) return std::nullopt;
  return panelColour(server_, QPoint(place->dst_x, place->dst_y));
}

void XEmbedIcon::redraw() {
  if (state_ == State::Docked) askForWidth();
}

// Tells the panel which shape the picture needs, and draws it: at once where the room suffices,
// else when the panel has given more.
void XEmbedIcon::askForWidth() {
  const QSize wanted(picture().width(symbols_), size_.height());
  window_->askForSize(wanted);
  if (state_ == State::Asking) {
    window_->resize(wanted);
    size_ = wanted;
  } else if (wanted.width() > size_.width()) {
    settling_.start();
  } else {
    paint();
  }
}

void XEmbedIcon::paint() {
  if (state_ != State::Docked) return;
  auto shown = picture();
  shown.colour = colour();
  canvas_->draw(shown.paint(symbols_, size_.width()));
}

bool XEmbedIcon::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  if (watched == QCoreApplication::instance() &&
      (type == QEvent::ApplicationFontChange || type == QEvent::ApplicationPaletteChange))
    redraw();
  return false;
}

bool XEmbedIcon::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) {
  if (type == "xcb_generic_event_t") handle(*static_cast<const xcb_generic_event_t*>(message));
  return false;
}

void XEmbedIcon::handle(const xcb_generic_event_t& event) {
  const auto as = [&]<typename T>(T* /*type*/) -> const T& {
    return *reinterpret_cast<const T*>(&event);
  };
  const auto ours = [this](xcb_window_t window) {
    return window_.has_value() && window == window_->id();
  };
  switch (event.response_type & 0x7f) {
    case XCB_REPARENT_NOTIFY: {
      const auto& news = as(static_cast<xcb_reparent_notify_event_t*>(nullptr));
      if (ours(news.window)) onReparented(news.parent);
      break;
    }
    case XCB_DESTROY_NOTIFY:
      if (ours(as(static_cast<xcb_destroy_notify_event_t*>(nullptr)).window)) giveUp();
      break;
    case XCB_CONFIGURE_NOTIFY: {
      const auto& news = as(static_cast<xcb_configure_notify_event_t*>(nullptr));
      if (ours(news.window)) onConfigured({news.width, news.height});
      break;
    }
    case XCB_EXPOSE: {
      const auto& news = as(static_cast<xcb_expose_event_t*>(nullptr));
      if (ours(news.window) && news.count == 0) paint();
      break;
    }
    case XCB_BUTTON_PRESS: {
      const auto& press = as(static_cast<xcb_button_press_event_t*>(nullptr));
      if (ours(press.event)) onPressed(press);
      break;
    }
    case XCB_BUTTON_RELEASE: {
      const auto& release = as(static_cast<xcb_button_release_event_t*>(nullptr));
      if (ours(release.event)) onReleased(release);
      break;
    }
    case XCB_ENTER_NOTIFY:
      if (ours(as(static_cast<xcb_enter_notify_event_t*>(nullptr)).event)) hovering_.start();
      break;
    case XCB_LEAVE_NOTIFY:
      if (ours(as(static_cast<xcb_leave_notify_event_t*>(nullptr)).event)) hideToolTip();
      break;
    default:
      break;
  }
}

void XEmbedIcon::onReparented(xcb_window_t parent) {
  if (parent == server_.root()) {
    giveUp();
  } else if (state_ == State::Asking) {
    patience_.stop();
    state_ = State::Docked;
    Q_EMIT docked();
    askForWidth();
  }
}

void XEmbedIcon::onConfigured(QSize given) {
  const QSize size = given.boundedTo(kLargest);
  if (size == size_ || state_ != State::Docked) return;
  const bool otherHeight = size.height() != size_.height();
  size_ = size;
  settling_.start();
  if (otherHeight)
    askForWidth();
  else
    paint();
}

void XEmbedIcon::onPressed(const xcb_button_press_event_t& press) {
  hideToolTip();
  if (press.detail == XCB_BUTTON_INDEX_3) handlers_.contextMenu({press.root_x, press.root_y});
}

void XEmbedIcon::onReleased(const xcb_button_release_event_t& release) {
  const bool inside = QRect(QPoint(0, 0), size_).contains(release.event_x, release.event_y);
  if (release.detail == XCB_BUTTON_INDEX_1 && inside)
    handlers_.activate({release.root_x, release.root_y});
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
  // Qt keeps each screen's corner where it is and scales what is inside.
  for (const auto* screen : QGuiApplication::screens()) {
    const double ratio = screen->devicePixelRatio();
    const auto corner = screen->geometry().topLeft();
    const QRect area(corner, screen->geometry().size() * ratio);
    if (area.contains(physical)) return corner + (physical - corner) / ratio;
  }
  return physical;
}

}  // namespace tollbeam
