#include "platform/freedesktop/statusbar/xembed/TrayOwner.h"

namespace tollbeam {
namespace {

constexpr auto kVisual = "_NET_SYSTEM_TRAY_VISUAL";
constexpr auto kColours = "_NET_SYSTEM_TRAY_COLORS";
constexpr auto kOrientation = "_NET_SYSTEM_TRAY_ORIENTATION";

}  // namespace

TrayOwner::TrayOwner(const XServer& server)
    : server_(server), selection_(server_, "_NET_SYSTEM_TRAY_S") {
  connect(&selection_, &ManagerSelection::propertyChanged, this, &TrayOwner::onProperty);
  connect(&selection_, &ManagerSelection::ownerChanged, this, [this] {
    read();
    Q_EMIT ownerChanged();
  });
  read();
}

void TrayOwner::read() {
  if (window() == XCB_WINDOW_NONE) return;
  const auto visual = server_.numbers(window(), server_.atom(kVisual));
  const bool usable = !visual.empty() && server_.depthOf(visual.front()) != 0;
  visual_ = usable ? visual.front() : server_.screen().root_visual;
  const auto orientation = server_.numbers(window(), server_.atom(kOrientation));
  vertical_ = !orientation.empty() && orientation.front() == 1;
  // Red, green and blue of 16 bits each; the foreground first, then error, warning and success.
  const auto colours = server_.numbers(window(), server_.atom(kColours));
  const auto byte = [&](int i) { return static_cast<int>((colours[i] >> 8) & 0xff); };
  foreground_.reset();
  if (colours.size() >= 3) foreground_ = QColor(byte(0), byte(1), byte(2));
}

void TrayOwner::onProperty(xcb_atom_t property) {
  const bool ofVisual = property == server_.atom(kVisual);
  if (!ofVisual && property != server_.atom(kColours) && property != server_.atom(kOrientation))
    return;
  const auto before = visual_;
  read();
  if (visual_ != before)
    Q_EMIT ownerChanged();
  else if (!ofVisual)
    Q_EMIT lookChanged();
}

}  // namespace tollbeam
