#include "platform/freedesktop/appearance/XSettingsWatch.h"

#include "platform/freedesktop/appearance/readings/XSettings.h"

namespace tollbeam {

XSettingsWatch::XSettingsWatch(const XServer& server)
    : server_(server),
      property_(server_.atom("_XSETTINGS_SETTINGS")),
      daemon_(server_, "_XSETTINGS_S") {
  connect(&daemon_, &ManagerSelection::ownerChanged, this, &XSettingsWatch::read);
  connect(&daemon_, &ManagerSelection::propertyChanged, this, [this](xcb_atom_t property) {
    if (property == property_) read();
  });
  read();
}

void XSettingsWatch::read() {
  if (daemon_.window() == XCB_WINDOW_NONE) return;
  const auto bytes = server_.bytes(daemon_.window(), property_);
  // A daemon that has just come publishes them later, which changes the property.
  if (!bytes) return;
  auto settings = decodeXSettings(*bytes);
  if (!settings || *settings == settings_) return;
  settings_ = std::move(*settings);
  Q_EMIT changed();
}

}  // namespace tollbeam
