#include "platform/freedesktop/statusbar/xembed/TrayOwner.h"

namespace tollbeam {

TrayOwner::TrayOwner(const XServer& server, QObject* parent)
    : QObject(parent),
      server_(server),
      atoms_{server_.atom("_NET_SYSTEM_TRAY_VISUAL"), server_.atom("_NET_SYSTEM_TRAY_COLORS"),
             server_.atom("_NET_SYSTEM_TRAY_ORIENTATION")},
      selection_(server_, "_NET_SYSTEM_TRAY_S") {
  connect(&selection_, &ManagerSelection::propertyChanged, this, &TrayOwner::onProperty);
  connect(&selection_, &ManagerSelection::ownerChanged, this, [this] {
    onOwner();
    Q_EMIT ownerChanged();
  });
  onOwner();
}

void TrayOwner::onOwner() {
  if (window() == XCB_WINDOW_NONE) return;
  readVisual();
  readLook();
}

void TrayOwner::readVisual() {
  const auto visual = server_.numbers(window(), atoms_.visual);
  const bool usable = !visual.empty() && server_.depthOf(visual.front()) != 0;
  visual_ = usable ? visual.front() : server_.screen().root_visual;
}

void TrayOwner::readLook() {
  const auto orientation = server_.numbers(window(), atoms_.orientation);
  vertical_ = !orientation.empty() && orientation.front() == 1;
  // Red, green and blue of 16 bits each; the foreground first, then error, warning and success.
  const auto colours = server_.numbers(window(), atoms_.colours);
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

}  // namespace tollbeam
