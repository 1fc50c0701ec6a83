// Plain system calls: a reading takes place every minute for as long as the machine is on.
#include "platform/freedesktop/power/readings/PowerSupplies.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <memory>
#include <span>

namespace tollbeam {

namespace {

constexpr std::array kKindAttributes{"type", "scope", "present", "usb_type"};

constexpr std::array kBatteryAttributes{
    "status",      "capacity",           "model_name",         "cycle_count",        "energy_now",
    "energy_full", "power_now",          "energy_full_design", "charge_now",         "charge_full",
    "current_now", "charge_full_design", "voltage_now",        "voltage_min_design", "temp"};

constexpr std::array kChargerAttributes{"online", "voltage_max", "voltage_now", "current_max"};

std::optional<std::string> readText(int folder, const std::string& path) {
  const int file = ::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  // The kernel gives an attribute as a whole, and never more than a page.
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
  readInto(supply, folder, device, kKindAttributes);
  if (isInternalBattery(supply)) {
    readInto(supply, folder, device, kBatteryAttributes);
  } else if (isExternalSupply(supply)) {
    readInto(supply, folder, device, kChargerAttributes);
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

std::string_view textOf(const SupplyAttributes& supply, std::string_view attribute) {
  const auto found = supply.find(attribute);
  return found == supply.end() ? std::string_view() : std::string_view(found->second);
}

std::optional<double> numberOf(const SupplyAttributes& supply, std::string_view attribute,
                               double least, double most) {
  const auto text = textOf(supply, attribute);
  std::int64_t number = 0;
  const auto* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  const auto value = static_cast<double>(number);
  if (value < least || value > most) return std::nullopt;
  return value;
}

bool isInternalBattery(const SupplyAttributes& supply) {
  return textOf(supply, "type") == "Battery" && textOf(supply, "scope") != "Device" &&
         textOf(supply, "present") != "0";
}

bool isExternalSupply(const SupplyAttributes& supply) {
  const auto type = textOf(supply, "type");
  if (type == "Battery" || textOf(supply, "scope") == "Device") return false;
  return type == "Mains" || type.starts_with("USB") || supply.contains("usb_type");
}

std::optional<bool> externalPowerConnected(const PowerSupplies& supplies) {
  std::optional<bool> connected;
  for (const auto& [name, supply] : supplies) {
    if (!isExternalSupply(supply) || !numberOf(supply, "online", 0, 2)) continue;
    // 2 is a programmable supply that is online.
    connected = connected.value_or(false) || numberOf(supply, "online", 1, 2);
  }
  return connected;
}

}  // namespace tollbeam
