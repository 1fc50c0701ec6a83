// Settings as a daemon of either byte order publishes them.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tollbeam::test {

class XSettingsBytes {
 public:
  explicit XSettingsBytes(bool bigEndian = false) : bigEndian_(bigEndian) {}

  XSettingsBytes& number(const std::string& name, std::int32_t value) {
    head(0, name);
    put(static_cast<std::uint32_t>(value), 4);
    return *this;
  }

  XSettingsBytes& text(const std::string& name, const std::string& value) {
    head(1, name);
    put(static_cast<std::uint32_t>(value.size()), 4);
    put(value);
    return *this;
  }

  XSettingsBytes& colour(const std::string& name) {
    head(2, name);
    put(0x11112222, 4);
    put(0x33334444, 4);
    return *this;
  }

  XSettingsBytes& unknown(const std::string& name) {
    head(9, name);
    return *this;
  }

  [[nodiscard]] std::vector<std::uint8_t> bytes() const {
    XSettingsBytes all(bigEndian_);
    all.body_ = {static_cast<std::uint8_t>(bigEndian_ ? 1 : 0), 0, 0, 0};
    all.put(7, 4);
    all.put(count_, 4);
    all.body_.insert(all.body_.end(), body_.begin(), body_.end());
    return std::move(all.body_);
  }

 private:
  void head(std::uint32_t type, const std::string& name) {
    ++count_;
    put(type, 1);
    put(0, 1);
    put(static_cast<std::uint32_t>(name.size()), 2);
    put(name);
    put(3, 4);
  }

  void put(std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
      const int byte = bigEndian_ ? size - 1 - i : i;
      body_.push_back(static_cast<std::uint8_t>(value >> (8 * byte)));
    }
  }

  void put(const std::string& value) {
    body_.insert(body_.end(), value.begin(), value.end());
    while (body_.size() % 4 != 0) body_.push_back(0);
  }

  bool bigEndian_;
  std::uint32_t count_ = 0;
  std::vector<std::uint8_t> body_;
};

}  // namespace tollbeam::test
