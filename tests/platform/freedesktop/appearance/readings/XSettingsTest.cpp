#include "platform/freedesktop/appearance/readings/XSettings.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/freedesktop/appearance/readings/XSettingsBytes.h"

namespace tollbeam {
namespace {

using test::XSettingsBytes;

std::vector<std::uint8_t> usual(bool bigEndian) {
  return XSettingsBytes(bigEndian)
      .text("Net/ThemeName", "Greybird-dark")
      .number("Gtk/EnableAnimations", 1)
      .colour("Gtk/Ground")
      .number("Xft/DPI", -1)
      .text("Gtk/FontName", "Sans 10")
      .text("Empty", "")
      .bytes();
}

const Dictionary kUsual{{"Net/ThemeName", "Greybird-dark"},
                        {"Gtk/EnableAnimations", 1},
                        {"Xft/DPI", -1},
                        {"Gtk/FontName", "Sans 10"},
                        {"Empty", ""}};

TEST(XSettings, DecodesBothByteOrders) {
  EXPECT_EQ(decodeXSettings(usual(false)), kUsual);
  EXPECT_EQ(decodeXSettings(usual(true)), kUsual);
}

TEST(XSettings, DecodesAnEmptyList) {
  EXPECT_EQ(decodeXSettings(XSettingsBytes().bytes()), Dictionary());
}

TEST(XSettings, RejectsATruncatedList) {
  for (const bool bigEndian : {false, true}) {
    auto bytes = usual(bigEndian);
    while (!bytes.empty()) {
      bytes.pop_back();
      EXPECT_FALSE(decodeXSettings(bytes)) << bytes.size();
    }
  }
}

TEST(XSettings, RejectsAnUnknownByteOrder) {
  auto bytes = usual(false);
  bytes.front() = 'l';
  EXPECT_FALSE(decodeXSettings(bytes));
}

TEST(XSettings, RejectsAnUnknownType) {
  EXPECT_FALSE(decodeXSettings(XSettingsBytes().unknown("What").bytes()));
}

TEST(XSettings, RejectsALengthBeyondTheEnd) {
  auto bytes = XSettingsBytes().text("A", "b").bytes();
  const std::size_t length = bytes.size() - 8;
  ASSERT_EQ(bytes[length], 1);
  for (const std::size_t i : {0, 1, 2, 3}) bytes[length + i] = 0xff;
  EXPECT_FALSE(decodeXSettings(bytes));
}

TEST(XSettings, RejectsACountBeyondTheEnd) {
  auto bytes = usual(false);
  for (const std::size_t i : {8, 9, 10, 11}) bytes[i] = 0xff;
  EXPECT_FALSE(decodeXSettings(bytes));
}

// The sanitizers would report a read out of bounds.
TEST(XSettings, SurvivesRandomDamage) {
  std::mt19937 random(1);
  for (int round = 0; round < 5000; ++round) {
    auto bytes = usual(round % 2 == 0);
    for (int hits = 0; hits < 3; ++hits)
      bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
    const auto settings = decodeXSettings(bytes);
    EXPECT_LE(settings.value_or(Dictionary()).size(), bytes.size());
  }
}

}  // namespace
}  // namespace tollbeam
