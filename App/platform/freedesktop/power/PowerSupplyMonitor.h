// Reports the kernel's events of power supplies. An event comes before the files have their new
// content: read them a little later. Main thread only.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <optional>

struct udev;
struct udev_monitor;

namespace tollbeam {

class PowerSupplyMonitor {
 public:
  /// Every supply except a battery counts as a charger, and so does the loss of events.
  enum class Change { battery, charger };

  /// Events that arrive together are reported once, as a charger's if one of them is.
  explicit PowerSupplyMonitor(std::function<void(Change)> changed);

  /// False where the system has no device events.
  [[nodiscard]] bool isListening() const { return notifier_.has_value(); }

 private:
  void drain();

  const std::function<void(Change)> changed_;
  const std::unique_ptr<udev, udev* (*)(udev*)> context_;
  const std::unique_ptr<udev_monitor, udev_monitor* (*)(udev_monitor*)> monitor_;
  std::optional<QSocketNotifier> notifier_;
};

}  // namespace tollbeam
