#include "platform/freedesktop/statusbar/xembed/TrayWindow.h"

#include <QCoreApplication>
#include <array>

namespace tollbeam {
namespace {

constexpr std::uint32_t kRequestDock = 0;
constexpr std::uint32_t kEmbeddingVersion = 0;
constexpr std::uint32_t kWantsToBeMapped = 1;
constexpr std::uint8_t kAlphaDepth = 32;

}  // namespace

TrayWindow::TrayWindow(const XServer& server, xcb_visualid_t visual, int side, std::uint32_t events)
    : server_(server), id_(xcb_generate_id(server.connection())) {
  create(visual, static_cast<std::uint16_t>(side), events);
  describe();
}

TrayWindow::~TrayWindow() {
  // The tray may have taken it along when it ended.
  server_.tolerate(xcb_destroy_window_checked(server_.connection(), id_));
  if (colours_ != XCB_NONE) xcb_free_colormap(server_.connection(), colours_);
  xcb_flush(server_.connection());
}

void TrayWindow::create(xcb_visualid_t visual, std::uint16_t side, std::uint32_t events) {
  auto* c = server_.connection();
  if (server_.depthOf(visual) == kAlphaDepth) {
    colours_ = xcb_generate_id(c);
    xcb_create_colormap(c, XCB_COLORMAP_ALLOC_NONE, colours_, server_.root(), visual);
    const std::array<std::uint32_t, 4> values{0, 0, events, colours_};
    xcb_create_window(c, kAlphaDepth, id_, server_.root(), -1, -1, side, side, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());
    return;
  }
  const std::array<std::uint32_t, 2> values{XCB_BACK_PIXMAP_PARENT_RELATIVE, events};
  xcb_create_window(c, XCB_COPY_FROM_PARENT, id_, server_.root(), -1, -1, side, side, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values.data());
}

void TrayWindow::describe() const {
  const auto set = [this](xcb_atom_t property, xcb_atom_t type, std::uint8_t format,
                          std::uint32_t length, const void* data) {
    xcb_change_property(server_.connection(), XCB_PROP_MODE_REPLACE, id_, property, type, format,
                        length, data);
  };
  // Panels remember by this name which items the user has hidden.
  const QByteArray name = "Tollbeam";
  const auto length = static_cast<std::uint32_t>(name.size());
  set(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, length, name.constData());
  set(server_.atom("_NET_WM_NAME"), server_.atom("UTF8_STRING"), 8, length, name.constData());
  const QByteArray wmClass("tollbeam\0Tollbeam\0", 18);
  set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(wmClass.size()),
      wmClass.constData());
  const auto pid = static_cast<std::uint32_t>(QCoreApplication::applicationPid());
  set(server_.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &pid);
  const std::array<std::uint32_t, 2> embedding{kEmbeddingVersion, kWantsToBeMapped};
  const auto info = server_.atom("_XEMBED_INFO");
  set(info, info, 32, 2, embedding.data());
}

void TrayWindow::askForPlace(xcb_window_t tray) const {
  xcb_client_message_event_t request{};
  request.response_type = XCB_CLIENT_MESSAGE;
  request.format = 32;
  request.window = tray;
  request.type = server_.atom("_NET_SYSTEM_TRAY_OPCODE");
  request.data.data32[0] = XCB_CURRENT_TIME;
  request.data.data32[1] = kRequestDock;
  request.data.data32[2] = id_;
  server_.tolerate(xcb_send_event_checked(server_.connection(), 0, tray, XCB_EVENT_MASK_NO_EVENT,
                                          reinterpret_cast<const char*>(&request)));
  xcb_flush(server_.connection());
}

void TrayWindow::askForSize(QSize size) const {
  // Flags, then at 5 the minimum and at 15 the base size: panels read one or the other.
  constexpr std::uint32_t kMinimumAndBase = (1U << 4) | (1U << 8);
  std::array<std::uint32_t, 18> hints{};
  hints[0] = kMinimumAndBase;
  hints[5] = hints[15] = static_cast<std::uint32_t>(size.width());
  hints[6] = hints[16] = static_cast<std::uint32_t>(size.height());
  server_.tolerate(xcb_change_property_checked(
      server_.connection(), XCB_PROP_MODE_REPLACE, id_, XCB_ATOM_WM_NORMAL_HINTS,
      XCB_ATOM_WM_SIZE_HINTS, 32, static_cast<std::uint32_t>(hints.size()), hints.data()));
  xcb_flush(server_.connection());
}

void TrayWindow::resize(QSize size) const {
  const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(size.width()),
                                            static_cast<std::uint32_t>(size.height())};
  server_.tolerate(xcb_configure_window_checked(server_.connection(), id_,
                                                XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                                                values.data()));
}

}  // namespace tollbeam
