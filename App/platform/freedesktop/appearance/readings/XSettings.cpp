#include "platform/freedesktop/appearance/readings/XSettings.h"

#include <span>
#include <string>
#include <utility>

namespace tollbeam {
namespace {

enum Type : std::uint8_t { number = 0, text = 1, colour = 2 };

// Reads from the front. After the end of the bytes all that is read is zero or empty, and `ok` is
// false.
class Reader {
 public:
  explicit Reader(const std::vector<std::uint8_t>& bytes) : rest_(bytes) {}

  [[nodiscard]] bool ok() const { return ok_; }
  void fail() { ok_ = false; }
  void setBigEndian(bool big) { bigEndian_ = big; }

  std::uint32_t number(std::size_t size) {
    const auto bytes = take(size);
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
      value = value << 8 | bytes[bigEndian_ ? i : size - 1 - i];
    return value;
  }

  // With the padding after it.
  std::string text(std::size_t size) {
    constexpr std::size_t kUnit = 4;
    const auto bytes = take(size);
    take((kUnit - size % kUnit) % kUnit);
    return {bytes.begin(), bytes.end()};
  }

  std::span<const std::uint8_t> take(std::size_t size) {
    ok_ = ok_ && size <= rest_.size();
    if (!ok_) return {};
    return std::exchange(rest_, rest_.subspan(size)).first(size);
  }

 private:
  std::span<const std::uint8_t> rest_;
  bool bigEndian_ = false;
  bool ok_ = true;
};

void readSetting(Reader& reader, Dictionary& settings) {
  const auto type = reader.number(1);
  reader.take(1);
  const auto length = reader.number(2);
  std::string name = reader.text(length);
  reader.take(4);  // The serial number of its last change.
  switch (type) {
    case Type::number: {
      const auto value = static_cast<std::int32_t>(reader.number(4));
      settings.insert_or_assign(std::move(name), Value(std::int64_t{value}));
      break;
    }
    case Type::text: {
      const auto size = reader.number(4);
      settings.insert_or_assign(std::move(name), Value(reader.text(size)));
      break;
    }
    case Type::colour:
      reader.take(8);
      break;
    default:
      reader.fail();
  }
}

}  // namespace

std::optional<Dictionary> decodeXSettings(const std::vector<std::uint8_t>& bytes) {
  Reader reader(bytes);
  const auto order = reader.number(1);
  if (order > 1) return std::nullopt;
  reader.setBigEndian(order == 1);
  reader.take(3);
  reader.take(4);  // The serial number of the whole.
  Dictionary settings;
  for (auto left = reader.number(4); left > 0 && reader.ok(); --left) {
    readSetting(reader, settings);
  }
  if (!reader.ok()) return std::nullopt;
  return settings;
}

}  // namespace tollbeam
