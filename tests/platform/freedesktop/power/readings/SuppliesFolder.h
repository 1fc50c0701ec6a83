// A folder like the kernel's list of power supplies: links to one folder per device, one file per
// attribute. Removed with the object.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/freedesktop/power/readings/PowerSupplies.h"

namespace tollbeam::test {

class SuppliesFolder {
 public:
  SuppliesFolder() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "tollbeam-supplies-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
    std::filesystem::create_directories(root_ / "class");
  }
  SuppliesFolder(const SuppliesFolder&) = delete;
  SuppliesFolder& operator=(const SuppliesFolder&) = delete;
  ~SuppliesFolder() { std::filesystem::remove_all(root_); }

  [[nodiscard]] std::string path() const { return (root_ / "class").string(); }

  void add(const std::string& device, const SupplyAttributes& attributes) const {
    std::filesystem::create_directories(root_ / "devices" / device);
    for (const auto& [attribute, text] : attributes) set(device, attribute, text);
    std::filesystem::create_symlink("../devices/" + device, root_ / "class" / device);
  }

  void set(const std::string& device, const std::string& attribute, const std::string& text) const {
    std::ofstream(root_ / "devices" / device / attribute) << text << '\n';
  }

  void remove(const std::string& device, const std::string& attribute) const {
    std::filesystem::remove(root_ / "devices" / device / attribute);
  }

 private:
  std::filesystem::path root_;
};

}  // namespace tollbeam::test
