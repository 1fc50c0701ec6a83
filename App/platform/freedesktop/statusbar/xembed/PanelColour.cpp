#include "platform/freedesktop/statusbar/xembed/PanelColour.h"

#include <QHash>
#include <QImage>
#include <algorithm>

namespace tollbeam {
namespace {

struct Panel {
  xcb_window_t window = XCB_WINDOW_NONE;
  QSize size;
};

Panel findPanel(const XServer& server, const std::optional<QPoint>& place) {
  auto* c = server.connection();
  const auto type = server.atom("_NET_WM_WINDOW_TYPE");
  const auto dock = server.atom("_NET_WM_WINDOW_TYPE_DOCK");
  const auto pixels = [](QSize size) { return qint64{size.width()} * size.height(); };
  Panel found;
  for (const xcb_window_t window : server.numbers(server.root(), server.atom("_NET_CLIENT_LIST"))) {
    const auto types = server.numbers(window, type);
    if (std::find(types.begin(), types.end(), dock) == types.end()) continue;
    const auto geometry = xcbReply(xcb_get_geometry_reply(c, xcb_get_geometry(c, window), nullptr));
    const auto corner = server.positionOf(window);
    if (!geometry || !corner) continue;
    const QSize size(geometry->width, geometry->height);
    if (place && !QRect(*corner, size).contains(*place)) continue;
    if (found.window == XCB_WINDOW_NONE || pixels(size) > pixels(found.size))
      found = {window, size};
  }
  return found;
}

// A line along the panel near its edge, where icons and text seldom reach.
QRect sampleOf(QSize panel) {
  const bool horizontal = panel.width() >= panel.height();
  return horizontal ? QRect(0, panel.height() / 8, panel.width(), 1)
                    : QRect(panel.width() / 8, 0, 1, panel.height());
}

}  // namespace

std::optional<QColor> panelColour(const XServer& server, std::optional<QPoint> place) {
  const Panel panel = findPanel(server, place);
  if (panel.window == XCB_WINDOW_NONE) return std::nullopt;
  const auto line = server.imageOf(panel.window, sampleOf(panel.size));
  if (!line) return std::nullopt;

  // The most frequent of 4096 colours: a mean would mix task buttons into the ground.
  QHash<QRgb, int> counts;
  for (int y = 0; y < line->height(); ++y) {
    for (int x = 0; x < line->width(); ++x) ++counts[line->pixel(x, y) & 0xfff0f0f0U];
  }
  const auto most = std::max_element(counts.cbegin(), counts.cend());
  return QColor(most.key() | 0x00080808U);
}

}  // namespace tollbeam
