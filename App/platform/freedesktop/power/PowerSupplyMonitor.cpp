#include "platform/freedesktop/power/PowerSupplyMonitor.h"

#include <libudev.h>

#include <string_view>
#include <utility>

namespace tollbeam {

PowerSupplyMonitor::PowerSupplyMonitor(std::function<void(Change)> changed)
    : changed_(std::move(changed)),
      context_(udev_new(), &udev_unref),
      monitor_(context_ ? udev_monitor_new_from_netlink(context_.get(), "udev") : nullptr,
               &udev_monitor_unref) {
  // The filter works in the kernel: events of other devices do not wake the process.
  if (!monitor_ ||
      udev_monitor_filter_add_match_subsystem_devtype(monitor_.get(), "power_supply", nullptr) <
          0 ||
      udev_monitor_enable_receiving(monitor_.get()) < 0) {
    return;
  }
  notifier_.emplace(udev_monitor_get_fd(monitor_.get()), QSocketNotifier::Read);
  QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_, [this] { drain(); });
}

void PowerSupplyMonitor::drain() {
  int events = 0;
  int batteries = 0;
  while (auto* device = udev_monitor_receive_device(monitor_.get())) {
    const char* type = udev_device_get_property_value(device, "POWER_SUPPLY_TYPE");
    ++events;
    if (type && type == std::string_view("Battery")) ++batteries;
    udev_device_unref(device);
  }
  // There are no events after an overrun of the socket, which loses them.
  changed_(events > 0 && batteries == events ? Change::battery : Change::charger);
}

}  // namespace tollbeam
