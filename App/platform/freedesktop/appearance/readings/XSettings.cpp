#include "platform/freedesktop/appearance/readings/XSettings.h"

#include <string>
#include <utility>

namespace tollbeam {
namespace {

enum Type : std::uint8_t { number = 0, text = 1, colour = 2 };

// Everything is padded to this.
constexpr std::size_t kUnit = 4;
constexpr std::size_t kColourBytes = 8;

// Reads on as long as there are bytes; what is read after their end is zero, and `ok` false.
class Reader {
 public:
  explicit Reader(const std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}

  [[nodiscard]] bool ok() const { return ok_; }
  void fail() { ok_ = false; }
  void setBigEndian(bool big) { bigEndian_ = big; }

  std::uint32_t unsignedOf(std::size_t size) {
    if (!has(size)) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const std::size_t place = bigEndian_ ? i : size - 1 - i;
      value = value << 8 | bytes_[at_ + place];
    }
    at_ += size;
    return value;
  }

  std::string textOf(std::size_t size) {
    if (!has(size)) return {};
    const auto first = bytes_.begin() + static_cast<std::ptrdiff_t>(at_);
    std::string value(first, first + static_cast<std::ptrdiff_t>(size));
    at_ += size;
    skip((kUnit - size % kUnit) % kUnit);
    return value;
  }

  void skip(std::size_t size) {
    if (has(size)) at_ += size;
  }

 private:
  bool has(std::size_t size) {
    ok_ = ok_ && size <= bytes_.size() - at_;
    return ok_;
  }

  const std::vector<std::uint8_t>& bytes_;
  std::size_t at_ = 0;
  bool bigEndian_ = false;
  bool ok_ = true;
};

void readSetting(Reader& reader, Dictionary& settings) {
  const auto type = reader.unsignedOf(1);
  reader.skip(1);
  const auto length = reader.unsignedOf(2);
  std::string name = reader.textOf(length);
  reader.skip(4);  // The serial of its last change.
  switch (type) {
    case Type::number: {
      const auto value = static_cast<std::int32_t>(reader.unsignedOf(4));
      settings.insert_or_assign(std::move(name), Value(std::int64_t{value}));
      break;
    }
    case Type::text: {
      const auto size = reader.unsignedOf(4);
      settings.insert_or_assign(std::move(name), Value(reader.textOf(size)));
      break;
    }
    case Type::colour:
      reader.skip(kColourBytes);
      break;
    default:
      reader.fail();
  }
}

}  // namespace

std::optional<Dictionary> decodeXSettings(const std::vector<std::uint8_t>& bytes) {
  Reader reader(bytes);
  const auto order = reader.unsignedOf(1);
  if (order > 1) return std::nullopt;
  reader.setBigEndian(order == 1);
  reader.skip(3);
  reader.skip(4);  // The serial of the whole.
  Dictionary settings;
  for (auto left = reader.unsignedOf(4); left > 0 && reader.ok(); --left) {
    readSetting(reader, settings);
  }
  if (!reader.ok()) return std::nullopt;
  return settings;
}

}  // namespace tollbeam
