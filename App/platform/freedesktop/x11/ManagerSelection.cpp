#include "platform/freedesktop/x11/ManagerSelection.h"

#include <QCoreApplication>

namespace tollbeam {

ManagerSelection::ManagerSelection(const XServer& server, const QByteArray& name)
    : server_(server),
      manager_(server_.atom("MANAGER")),
      selection_(server_.selectionOfScreen(name)) {
  server_.alsoSelect(server_.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  QCoreApplication::instance()->installNativeEventFilter(this);
  acquire();
}

ManagerSelection::~ManagerSelection() {
  if (auto* app = QCoreApplication::instance()) app->removeNativeEventFilter(this);
}

// The end of an owner that ends before its events are selected is not reported: hence the second
// question.
void ManagerSelection::acquire() {
  do {
    window_ = server_.ownerOf(selection_);
    if (window_ == XCB_WINDOW_NONE) return;
    server_.alsoSelect(window_, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
  } while (server_.ownerOf(selection_) != window_);
}

bool ManagerSelection::nativeEventFilter(const QByteArray& type, void* message,
                                         qintptr* /*result*/) {
  if (type != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  const auto before = window_;
  switch (event->response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
      const auto* announcement = reinterpret_cast<const xcb_client_message_event_t*>(event);
      if (announcement->type != manager_ || announcement->data.data32[1] != selection_) break;
      acquire();
      if (window_ != before) Q_EMIT ownerChanged();
      break;
    }
    case XCB_DESTROY_NOTIFY:
      if (before == XCB_WINDOW_NONE ||
          reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window != before)
        break;
      acquire();
      Q_EMIT ownerChanged();
      break;
    case XCB_PROPERTY_NOTIFY: {
      const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event);
      if (before != XCB_WINDOW_NONE && change->window == before)
        Q_EMIT propertyChanged(change->atom);
      break;
    }
    default:
      break;
  }
  return false;
}

}  // namespace tollbeam
