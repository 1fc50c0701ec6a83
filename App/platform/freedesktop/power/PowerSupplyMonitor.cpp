#include "platform/freedesktop/power/PowerSupplyMonitor.h"

#include <libudev.h>

#include <string_view>
#include <utility>

namespace tollbeam {

namespace {

bool isBattery(udev_device* device) {
  const char* type = udev_device_get_property_value(device, "POWER_SUPPLY_TYPE");
  return type && type == std::string_view("Battery");
}

}  // namespace

void PowerSupplyMonitor::Release::operator()(udev* context) const { udev_unref(context); }

void PowerSupplyMonitor::Release::operator()(udev_monitor* monitor) const {
  udev_monitor_unref(monitor);
}

std::unique_ptr<PowerSupplyMonitor> PowerSupplyMonitor::start(Changed changed) {
  Context context(udev_new());
  if (!context) return nullptr;
  Monitor monitor(udev_monitor_new_from_netlink(context.get(), "udev"));
  if (!monitor) return nullptr;
  // The filter works in the kernel: events of other devices do not wake us.
  if (udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), "power_supply", nullptr) < 0 ||
      udev_monitor_enable_receiving(monitor.get()) < 0) {
    return nullptr;
  }
  return std::unique_ptr<PowerSupplyMonitor>(
      new PowerSupplyMonitor(std::move(context), std::move(monitor), std::move(changed)));
}

PowerSupplyMonitor::PowerSupplyMonitor(Context context, Monitor monitor, Changed changed)
    : context_(std::move(context)),
      monitor_(std::move(monitor)),
      notifier_(udev_monitor_get_fd(monitor_.get()), QSocketNotifier::Read),
      changed_(std::move(changed)) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { drain(); });
}

void PowerSupplyMonitor::drain() {
  int events = 0;
  int batteries = 0;
  while (auto* device = udev_monitor_receive_device(monitor_.get())) {
    ++events;
    if (isBattery(device)) ++batteries;
    udev_device_unref(device);
  }
  // None at all after an overrun of the socket, when events are lost: something happened.
  changed_(events > 0 && batteries == events ? Change::battery : Change::charger);
}

}  // namespace tollbeam
