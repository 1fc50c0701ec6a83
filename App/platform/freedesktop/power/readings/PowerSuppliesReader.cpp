// The one place that touches the kernel's files. Plain system calls: a reading happens every minute
// for as long as the machine is on.
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <span>

#include "platform/freedesktop/power/readings/PowerSupplies.h"

namespace tollbeam {

namespace {

constexpr std::array kindAttributes{"type", "scope", "present", "usb_type"};

constexpr std::array batteryAttributes{
    "status",      "capacity",           "model_name",         "cycle_count",        "energy_now",
    "energy_full", "power_now",          "energy_full_design", "charge_now",         "charge_full",
    "current_now", "charge_full_design", "voltage_now",        "voltage_min_design", "temp"};

constexpr std::array supplyAttributes{"online", "voltage_max", "voltage_now", "current_max"};

std::optional<std::string> readText(int folder, const std::string& path) {
  const int file = ::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  // An attribute is read whole or not at all, and is never longer than a page.
  std::array<char, 4096> buffer{};
  const auto length = ::read(file, buffer.data(), buffer.size());
  ::close(file);
  if (length < 0) return std::nullopt;
  std::string_view text(buffer.data(), static_cast<std::size_t>(length));
  const auto last = text.find_last_not_of(" \t\r\n");
  return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

void readInto(SupplyAttributes& supply, int folder, const std::string& device,
              std::span<const char* const> attributes) {
  for (const auto* attribute : attributes) {
    if (auto text = readText(folder, device + "/" + attribute))
      supply[attribute] = *std::move(text);
  }
}

SupplyAttributes readSupply(int folder, const std::string& device) {
  SupplyAttributes supply;
  readInto(supply, folder, device, kindAttributes);
  if (isInternalBattery(supply)) {
    readInto(supply, folder, device, batteryAttributes);
  } else if (isExternalSupply(supply)) {
    readInto(supply, folder, device, supplyAttributes);
  }
  return supply;
}

}  // namespace

std::optional<PowerSupplies> readPowerSupplies(const std::string& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(folder.c_str()), &::closedir);
  if (!directory) return std::nullopt;
  const int descriptor = ::dirfd(directory.get());
  PowerSupplies supplies;
  while (const auto* entry = ::readdir(directory.get())) {
    const std::string device = static_cast<const char*>(entry->d_name);
    if (!device.starts_with('.')) supplies.emplace(device, readSupply(descriptor, device));
  }
  return supplies;
}

}  // namespace tollbeam
