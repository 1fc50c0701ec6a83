// Reports the kernel's events of power supplies. An event comes before the files have their new
// content: read them a little later. Main thread only.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

struct udev;
struct udev_monitor;

namespace tollbeam {

class PowerSupplyMonitor {
 public:
  /// Anything but a battery counts as a charger, and so do events that were lost.
  enum class Change { battery, charger };
  using Changed = std::function<void(Change)>;

  /// Listens until it is destroyed. Events that arrive together are one call, of a charger if one
  /// of them is. Null where the system has no device events.
  [[nodiscard]] static std::unique_ptr<PowerSupplyMonitor> start(Changed changed);

 private:
  struct Release {
    void operator()(udev* context) const;
    void operator()(udev_monitor* monitor) const;
  };
  using Context = std::unique_ptr<udev, Release>;
  using Monitor = std::unique_ptr<udev_monitor, Release>;

  PowerSupplyMonitor(Context context, Monitor monitor, Changed changed);
  void drain();

  Context context_;
  Monitor monitor_;
  QSocketNotifier notifier_;
  Changed changed_;
};

}  // namespace tollbeam
