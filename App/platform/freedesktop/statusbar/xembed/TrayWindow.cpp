#include "platform/freedesktop/statusbar/xembed/TrayWindow.h"

#include <QCoreApplication>
#include <array>
#include <string_view>

namespace tollbeam {
namespace {

constexpr std::uint32_t kRequestDock = 0;
constexpr std::uint32_t kEmbeddingVersion = 0;
constexpr std::uint32_t kMapMe = 1;
constexpr std::uint8_t kAlphaDepth = 32;

bool isArgb(const xcb_render_pictforminfo_t& format) {
  return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == kAlphaDepth &&
         format.direct.alpha_mask == 0xff && format.direct.alpha_shift == 24 &&
         format.direct.red_shift == 16 && format.direct.green_shift == 8 &&
         format.direct.blue_shift == 0;
}

}  // namespace

TrayWindow::TrayWindow(const XServer& server, xcb_visualid_t visual, int side, std::uint32_t events)
    : server_(server),
      id_(xcb_generate_id(server.connection())),
      alpha_(server.depthOf(visual) == kAlphaDepth) {
  create(visual, static_cast<std::uint16_t>(side), events);
  describe();
  if (!alpha_) findFormats(visual);
}

TrayWindow::~TrayWindow() {
  // The tray may have destroyed it when it ended.
  server_.tolerate(xcb_destroy_window_checked(server_.connection(), id_));
  if (colours_ != XCB_NONE) xcb_free_colormap(server_.connection(), colours_);
  xcb_flush(server_.connection());
}

void TrayWindow::create(xcb_visualid_t visual, std::uint16_t side, std::uint32_t events) {
  auto* c = server_.connection();
  const auto make = [&](std::uint8_t depth, xcb_visualid_t ofVisual, std::uint32_t mask,
                        const auto& values) {
    xcb_create_window(c, depth, id_, server_.root(), -1, -1, side, side, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, ofVisual, mask, values.data());
  };
  if (!alpha_) {
    make(XCB_COPY_FROM_PARENT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK,
         std::array<std::uint32_t, 2>{XCB_BACK_PIXMAP_PARENT_RELATIVE, events});
    return;
  }
  colours_ = xcb_generate_id(c);
  xcb_create_colormap(c, XCB_COLORMAP_ALLOC_NONE, colours_, server_.root(), visual);
  make(kAlphaDepth, visual,
       XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
       std::array<std::uint32_t, 4>{0, 0, events, colours_});
}

void TrayWindow::describe() const {
  const auto set = [this](xcb_atom_t property, xcb_atom_t type, std::uint8_t format,
                          std::size_t length, const void* data) {
    xcb_change_property(server_.connection(), XCB_PROP_MODE_REPLACE, id_, property, type, format,
                        static_cast<std::uint32_t>(length), data);
  };
  // Panels remember by this name which items the user has hidden.
  constexpr std::string_view kName = "Tollbeam";
  constexpr std::string_view kClass("tollbeam\0Tollbeam\0", 18);
  set(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, kName.size(), kName.data());
  set(server_.atom("_NET_WM_NAME"), server_.atom("UTF8_STRING"), 8, kName.size(), kName.data());
  set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, kClass.size(), kClass.data());
  const auto pid = static_cast<std::uint32_t>(QCoreApplication::applicationPid());
  set(server_.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &pid);
  const std::array<std::uint32_t, 2> embedding{kEmbeddingVersion, kMapMe};
  const auto info = server_.atom("_XEMBED_INFO");
  set(info, info, 32, embedding.size(), embedding.data());
}

void TrayWindow::findFormats(xcb_visualid_t visual) {
  auto* c = server_.connection();
  const auto reply =
      xcbReply(xcb_render_query_pict_formats_reply(c, xcb_render_query_pict_formats(c), nullptr));
  if (!reply) return;
  for (auto i = xcb_render_query_pict_formats_formats_iterator(reply.get()); i.rem > 0;
       xcb_render_pictforminfo_next(&i)) {
    if (isArgb(*i.data)) pictureFormat_ = i.data->id;
  }
  for (auto screens = xcb_render_query_pict_formats_screens_iterator(reply.get()); screens.rem > 0;
       xcb_render_pictscreen_next(&screens)) {
    for (auto depths = xcb_render_pictscreen_depths_iterator(screens.data); depths.rem > 0;
         xcb_render_pictdepth_next(&depths)) {
      for (auto visuals = xcb_render_pictdepth_visuals_iterator(depths.data); visuals.rem > 0;
           xcb_render_pictvisual_next(&visuals)) {
        if (visuals.data->visual == visual) windowFormat_ = visuals.data->format;
      }
    }
  }
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
  std::array<std::uint32_t, 18> hints{kMinimumAndBase};
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

void TrayWindow::draw(const QImage& picture) const {
  if (!alpha_ && (pictureFormat_ == XCB_NONE || windowFormat_ == XCB_NONE)) return;
  auto* c = server_.connection();
  const auto width = static_cast<std::uint16_t>(picture.width());
  const auto height = static_cast<std::uint16_t>(picture.height());
  const xcb_drawable_t target = alpha_ ? id_ : xcb_generate_id(c);
  if (!alpha_) xcb_create_pixmap(c, kAlphaDepth, target, server_.root(), width, height);
  const xcb_gcontext_t context = xcb_generate_id(c);
  server_.tolerate(xcb_create_gc_checked(c, context, target, 0, nullptr));
  server_.tolerate(xcb_put_image_checked(
      c, XCB_IMAGE_FORMAT_Z_PIXMAP, target, context, width, height, 0, 0, 0, kAlphaDepth,
      static_cast<std::uint32_t>(picture.sizeInBytes()), picture.constBits()));
  server_.tolerate(xcb_free_gc_checked(c, context));
  if (!alpha_) {
    blend(target, width, height);
    xcb_free_pixmap(c, target);
  }
  xcb_flush(c);
}

void TrayWindow::blend(xcb_pixmap_t picture, std::uint16_t width, std::uint16_t height) const {
  auto* c = server_.connection();
  const xcb_render_picture_t source = xcb_generate_id(c);
  const xcb_render_picture_t window = xcb_generate_id(c);
  xcb_render_create_picture(c, source, picture, pictureFormat_, 0, nullptr);
  server_.tolerate(xcb_render_create_picture_checked(c, window, id_, windowFormat_, 0, nullptr));
  server_.tolerate(xcb_clear_area_checked(c, 0, id_, 0, 0, 0, 0));
  server_.tolerate(xcb_render_composite_checked(c, XCB_RENDER_PICT_OP_OVER, source, XCB_NONE,
                                                window, 0, 0, 0, 0, 0, 0, width, height));
  server_.tolerate(xcb_render_free_picture_checked(c, window));
  xcb_render_free_picture(c, source);
}

std::optional<QColor> TrayWindow::ground(QSize size) const {
  if (alpha_) return std::nullopt;
  server_.tolerate(xcb_clear_area_checked(server_.connection(), 0, id_, 0, 0, 0, 0));
  const auto shown = server_.imageOf(id_, QRect(size.width() / 2, size.height() / 2, 1, 1));
  if (!shown) return std::nullopt;
  return shown->pixelColor(0, 0);
}

}  // namespace tollbeam
