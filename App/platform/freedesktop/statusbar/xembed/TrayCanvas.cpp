#include "platform/freedesktop/statusbar/xembed/TrayCanvas.h"

namespace tollbeam {
namespace {

constexpr std::uint8_t kAlphaDepth = 32;

bool isArgb(const xcb_render_pictforminfo_t& format) {
  return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == kAlphaDepth &&
         format.direct.alpha_mask == 0xff && format.direct.alpha_shift == 24 &&
         format.direct.red_shift == 16 && format.direct.green_shift == 8 &&
         format.direct.blue_shift == 0;
}

struct Formats {
  xcb_render_pictformat_t argb = XCB_NONE;
  xcb_render_pictformat_t window = XCB_NONE;
};

Formats formatsFor(const XServer& server, xcb_visualid_t visual) {
  auto* c = server.connection();
  Formats formats;
  const auto reply =
      xcbReply(xcb_render_query_pict_formats_reply(c, xcb_render_query_pict_formats(c), nullptr));
  if (!reply) return formats;
  for (auto i = xcb_render_query_pict_formats_formats_iterator(reply.get()); i.rem > 0;
       xcb_render_pictforminfo_next(&i)) {
    if (isArgb(*i.data)) formats.argb = i.data->id;
  }
  for (auto screens = xcb_render_query_pict_formats_screens_iterator(reply.get()); screens.rem > 0;
       xcb_render_pictscreen_next(&screens)) {
    for (auto depths = xcb_render_pictscreen_depths_iterator(screens.data); depths.rem > 0;
         xcb_render_pictdepth_next(&depths)) {
      for (auto visuals = xcb_render_pictdepth_visuals_iterator(depths.data); visuals.rem > 0;
           xcb_render_pictvisual_next(&visuals)) {
        if (visuals.data->visual == visual) formats.window = visuals.data->format;
      }
    }
  }
  return formats;
}

}  // namespace

TrayCanvas::TrayCanvas(const XServer& server, xcb_window_t window, xcb_visualid_t visual)
    : server_(server), window_(window), alpha_(server.depthOf(visual) == kAlphaDepth) {
  auto* c = server_.connection();
  if (alpha_) {
    context_ = xcb_generate_id(c);
    xcb_create_gc(c, context_, window_, 0, nullptr);
    return;
  }
  const auto formats = formatsFor(server_, visual);
  if (formats.argb == XCB_NONE || formats.window == XCB_NONE) return;
  argb_ = formats.argb;
  target_ = xcb_generate_id(c);
  xcb_render_create_picture(c, target_, window_, formats.window, 0, nullptr);
}

TrayCanvas::~TrayCanvas() {
  // The server took the target away with the window, if that is gone already.
  auto* c = server_.connection();
  if (target_ != XCB_NONE) server_.tolerate(xcb_render_free_picture_checked(c, target_));
  if (context_ != XCB_NONE) server_.tolerate(xcb_free_gc_checked(c, context_));
}

void TrayCanvas::draw(const QImage& picture) {
  auto* c = server_.connection();
  if (alpha_) {
    server_.tolerate(xcb_put_image_checked(
        c, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context_,
        static_cast<std::uint16_t>(picture.width()), static_cast<std::uint16_t>(picture.height()),
        0, 0, 0, kAlphaDepth, static_cast<std::uint32_t>(picture.sizeInBytes()),
        picture.constBits()));
  } else if (target_ != XCB_NONE) {
    mix(picture);
  }
  xcb_flush(c);
}

void TrayCanvas::mix(const QImage& picture) {
  auto* c = server_.connection();
  const auto width = static_cast<std::uint16_t>(picture.width());
  const auto height = static_cast<std::uint16_t>(picture.height());
  const xcb_pixmap_t pixmap = xcb_generate_id(c);
  const xcb_gcontext_t context = xcb_generate_id(c);
  const xcb_render_picture_t source = xcb_generate_id(c);
  xcb_create_pixmap(c, kAlphaDepth, pixmap, server_.root(), width, height);
  xcb_create_gc(c, context, pixmap, 0, nullptr);
  xcb_put_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, height, 0, 0, 0, kAlphaDepth,
                static_cast<std::uint32_t>(picture.sizeInBytes()), picture.constBits());
  xcb_render_create_picture(c, source, pixmap, argb_, 0, nullptr);

  server_.tolerate(xcb_clear_area_checked(c, 0, window_, 0, 0, 0, 0));
  server_.tolerate(xcb_render_composite_checked(c, XCB_RENDER_PICT_OP_OVER, source, XCB_NONE,
                                                target_, 0, 0, 0, 0, 0, 0, width, height));
  xcb_render_free_picture(c, source);
  xcb_free_gc(c, context);
  xcb_free_pixmap(c, pixmap);
}

std::optional<QColor> TrayCanvas::ground(const QSize& size) const {
  if (alpha_) return std::nullopt;
  server_.tolerate(xcb_clear_area_checked(server_.connection(), 0, window_, 0, 0, 0, 0));
  const auto shown = server_.look(window_, QRect(size.width() / 2, size.height() / 2, 1, 1));
  if (!shown) return std::nullopt;
  return shown->pixelColor(0, 0);
}

}  // namespace tollbeam
