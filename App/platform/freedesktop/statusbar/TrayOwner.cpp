#include "platform/freedesktop/statusbar/TrayOwner.h"

#include <QCoreApplication>

namespace tollbeam {

TrayOwner::TrayOwner(const XServer& server, QObject* parent)
    : QObject(parent),
      server_(server),
      atoms_{server_.atom("MANAGER"),
             server_.atom("_NET_SYSTEM_TRAY_S" + QByteArray::number(server_.screenNumber())),
             server_.atom("_NET_SYSTEM_TRAY_VISUAL"), server_.atom("_NET_SYSTEM_TRAY_COLORS"),
             server_.atom("_NET_SYSTEM_TRAY_ORIENTATION")} {
  server_.alsoSelect(server_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  QCoreApplication::instance()->installNativeEventFilter(this);
  acquire();
}

TrayOwner::~TrayOwner() {
  if (auto* app = QCoreApplication::instance()) app->removeNativeEventFilter(this);
}

void TrayOwner::acquire() {
  const auto owner = xcbReply(xcb_get_selection_owner_reply(
      server_.connection(), xcb_get_selection_owner(server_.connection(), atoms_.selection),
      nullptr));
  window_ = owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
  if (window_ == XCB_WINDOW_NONE) return;
  server_.alsoSelect(window_, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
  readVisual();
  readLook();
}

void TrayOwner::readVisual() {
  const auto visual = server_.numbers(window_, atoms_.visual);
  const bool usable = !visual.empty() && server_.depthOf(visual.front()) != 0;
  visual_ = usable ? visual.front() : server_.screen().root_visual;
}

void TrayOwner::readLook() {
  const auto orientation = server_.numbers(window_, atoms_.orientation);
  vertical_ = !orientation.empty() && orientation.front() == 1;
  // Red, green and blue of 16 bits each; the foreground first, then error, warning and success.
  const auto colours = server_.numbers(window_, atoms_.colours);
  foreground_.reset();
  if (colours.size() >= 3) {
    const auto byte = [&](int i) { return static_cast<int>((colours[i] >> 8) & 0xff); };
    foreground_ = QColor(byte(0), byte(1), byte(2));
  }
}

void TrayOwner::onProperty(xcb_atom_t property) {
  if (property == atoms_.visual) {
    const auto before = visual_;
    readVisual();
    if (visual_ != before) Q_EMIT ownerChanged();
  } else if (property == atoms_.colours || property == atoms_.orientation) {
    readLook();
    Q_EMIT lookChanged();
  }
}

bool TrayOwner::nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) {
  if (type != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  switch (event->response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
      const auto* news = reinterpret_cast<const xcb_client_message_event_t*>(event);
      if (news->type != atoms_.manager || news->data.data32[1] != atoms_.selection) break;
      const auto before = window_;
      acquire();
      if (window_ != before) Q_EMIT ownerChanged();
      break;
    }
    case XCB_DESTROY_NOTIFY:
      if (window_ == XCB_WINDOW_NONE ||
          reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window != window_)
        break;
      acquire();
      Q_EMIT ownerChanged();
      break;
    case XCB_PROPERTY_NOTIFY: {
      const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event);
      if (window_ != XCB_WINDOW_NONE && change->window == window_) onProperty(change->atom);
      break;
    }
    default:
      break;
  }
  return false;
}

}  // namespace tollbeam
