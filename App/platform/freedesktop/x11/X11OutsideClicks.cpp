#include "platform/freedesktop/x11/X11OutsideClicks.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <QGuiApplication>
#include <QSocketNotifier>
#include <memory>
#include <utility>

#include "platform/freedesktop/x11/XServer.h"

namespace tollbeam {
namespace {

using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

// The extension's opcode.
std::optional<std::uint8_t> inputExtension(xcb_connection_t* connection) {
  const auto* extension = xcb_get_extension_data(connection, &xcb_input_id);
  if (!extension || !extension->present) return std::nullopt;
  // Raw events arrive during other programs' grabs from version 2.1 on.
  const auto version = xcbReply(xcb_input_xi_query_version_reply(
      connection, xcb_input_xi_query_version(connection, 2, 2), nullptr));
  if (!version || version->major_version < 2) return std::nullopt;
  return extension->major_opcode;
}

class RawButtons : public std::enable_shared_from_this<RawButtons> {
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
      // Waits for the server, so that every later click is reported.
      const auto cookie =
          xcb_input_xi_select_events_checked(connection_.get(), screen.data->root, 1, &select.head);
      (void)xcbReply(xcb_request_check(connection_.get(), cookie));
    }
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { read(); });
  }

 private:
  void read() {
    // A callback may end the observation: then this is the last reference.
    const auto self = shared_from_this();
    while (self.use_count() > 1) {
      const auto event = xcbReply(xcb_poll_for_event(connection_.get()));
      if (!event) break;
      const auto* generic = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
      if ((event->response_type & 0x7f) != XCB_GE_GENERIC || generic->extension != opcode_)
        continue;
      if (generic->event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        callback_(OutsideClicks::Button::pressed);
      else if (generic->event_type == XCB_INPUT_RAW_BUTTON_RELEASE)
        callback_(OutsideClicks::Button::released);
    }
    if (xcb_connection_has_error(connection_.get())) notifier_.setEnabled(false);
  }

  Connection connection_;
  std::uint8_t opcode_;
  std::function<void(OutsideClicks::Button)> callback_;
  QSocketNotifier notifier_;
};

}  // namespace

std::optional<Subscription> X11OutsideClicks::observe(std::function<void(Button)> callback) {
  // XWayland reports only clicks on X11 windows.
  if (QGuiApplication::platformName() != QStringLiteral("xcb") ||
      !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    return std::nullopt;
  }
  Connection connection(xcb_connect(nullptr, nullptr), &xcb_disconnect);
  if (xcb_connection_has_error(connection.get())) return std::nullopt;
  const auto opcode = inputExtension(connection.get());
  if (!opcode) return std::nullopt;
  return Subscription(
      std::make_shared<RawButtons>(std::move(connection), *opcode, std::move(callback)));
}

}  // namespace tollbeam
