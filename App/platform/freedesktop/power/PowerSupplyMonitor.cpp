#include "platform/freedesktop/power/PowerSupplyMonitor.h"

#include <libudev.h>

#include <utility>

namespace tollbeam {

void PowerSupplyMonitor::Release::operator()(udev* context) const { udev_unref(context); }

void PowerSupplyMonitor::Release::operator()(udev_monitor* monitor) const {
  udev_monitor_unref(monitor);
}

std::unique_ptr<PowerSupplyMonitor> PowerSupplyMonitor::start(std::function<void()> changed) {
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

PowerSupplyMonitor::PowerSupplyMonitor(Context context, Monitor monitor,
                                       std::function<void()> changed)
    : context_(std::move(context)),
      monitor_(std::move(monitor)),
      notifier_(udev_monitor_get_fd(monitor_.get()), QSocketNotifier::Read),
      changed_(std::move(changed)) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { drain(); });
}

void PowerSupplyMonitor::drain() {
  while (auto* device = udev_monitor_receive_device(monitor_.get())) udev_device_unref(device);
  // Also after an overrun of the socket, when events are lost: something happened.
  changed_();
}

}  // namespace tollbeam
