#include "platform/freedesktop/x11/X11OutsideClicks.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <QGuiApplication>
#include <QSocketNotifier>
#include <cstdlib>
#include <memory>
#include <utility>

namespace tollbeam {

namespace {

struct Freed {
  void operator()(void* p) const { std::free(p); }
};
struct Disconnected {
  void operator()(xcb_connection_t* c) const { xcb_disconnect(c); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnected>;

std::optional<std::uint8_t> inputExtension(xcb_connection_t* connection) {
  const auto* extension = xcb_get_extension_data(connection, &xcb_input_id);
  if (!extension || !extension->present) return std::nullopt;
  // Raw events reach us during other programs' grabs from version 2.1 on.
  const std::unique_ptr<xcb_input_xi_query_version_reply_t, Freed> version(
      xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2),
                                       nullptr));
  if (!version || version->major_version < 2) return std::nullopt;
  return extension->major_opcode;
}

class RawButtons {
 public:
  RawButtons(Connection connection, std::uint8_t opcode,
             std::function<void(OutsideClicks::Button)> callback)
      : connection_(std::move(connection)),
        opcode_(opcode),
        callback_(std::move(callback)),
        notifier_(xcb_get_file_descriptor(connection_.get()), QSocketNotifier::Read) {
    struct {
      xcb_input_event_mask_t head;
      std::uint32_t mask;
    } select = {
        {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
        XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
    const auto* setup = xcb_get_setup(connection_.get());
    for (auto screen = xcb_setup_roots_iterator(setup); screen.rem > 0; xcb_screen_next(&screen)) {
      // Waits for the server: a click from now on is seen.
      const auto cookie =
          xcb_input_xi_select_events_checked(connection_.get(), screen.data->root, 1, &select.head);
      const std::unique_ptr<xcb_generic_error_t, Freed> error(
          xcb_request_check(connection_.get(), cookie));
    }
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { read(); });
  }

  /// A callback may end the observation, so `self` keeps this alive meanwhile.
  static void keepWhileReading(const std::shared_ptr<RawButtons>& self) { self->self_ = self; }

 private:
  void read() {
    const auto self = self_.lock();
    // Once nobody but this call keeps it, the observation is over.
    while (const std::unique_ptr<xcb_generic_event_t, Freed> event{
        self.use_count() > 1 ? xcb_poll_for_event(connection_.get()) : nullptr}) {
      if ((event->response_type & 0x7f) != XCB_GE_GENERIC) continue;
      const auto* generic = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
      if (generic->extension != opcode_) continue;
      if (generic->event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
        callback_(OutsideClicks::Button::pressed);
      } else if (generic->event_type == XCB_INPUT_RAW_BUTTON_RELEASE) {
        callback_(OutsideClicks::Button::released);
      }
    }
    if (xcb_connection_has_error(connection_.get())) notifier_.setEnabled(false);
  }

  Connection connection_;
  std::uint8_t opcode_;
  std::function<void(OutsideClicks::Button)> callback_;
  QSocketNotifier notifier_;
  std::weak_ptr<RawButtons> self_;
};

}  // namespace

std::optional<Subscription> X11OutsideClicks::observe(std::function<void(Button)> callback) {
  // Through XWayland only clicks on X11 windows would be told.
  if (QGuiApplication::platformName() != QStringLiteral("xcb") ||
      !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    return std::nullopt;
  }
  Connection connection(xcb_connect(nullptr, nullptr));
  if (xcb_connection_has_error(connection.get())) return std::nullopt;
  const auto opcode = inputExtension(connection.get());
  if (!opcode) return std::nullopt;
  auto buttons = std::make_shared<RawButtons>(std::move(connection), *opcode, std::move(callback));
  RawButtons::keepWhileReading(buttons);
  return Subscription(std::move(buttons));
}

}  // namespace tollbeam
