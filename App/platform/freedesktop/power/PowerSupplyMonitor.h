// Tells that the kernel's power supplies changed. An event comes before the files have their new
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
  /// Listens until it is destroyed. Null where the system has no device events.
  [[nodiscard]] static std::unique_ptr<PowerSupplyMonitor> start(std::function<void()> changed);

 private:
  struct Release {
    void operator()(udev* context) const;
    void operator()(udev_monitor* monitor) const;
  };
  using Context = std::unique_ptr<udev, Release>;
  using Monitor = std::unique_ptr<udev_monitor, Release>;

  PowerSupplyMonitor(Context context, Monitor monitor, std::function<void()> changed);
  void drain();

  Context context_;
  Monitor monitor_;
  QSocketNotifier notifier_;
  std::function<void()> changed_;
};

}  // namespace tollbeam
