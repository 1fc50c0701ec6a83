#include "resources/Symbols.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "battery/BatteryState.h"

namespace tollbeam {
namespace {

// Every name that some battery state names.
std::set<std::string> namesOfAllStates() {
  std::set<std::string> names;
  const auto add = [&](const BatteryState& state) {
    for (const auto& name : state.symbolNames()) names.insert(name);
  };
  add({});
  for (const int percent : {0, 13, 38, 63, 88, 100}) {
    for (const bool charging : {false, true}) {
      for (const bool plugged : {false, true}) {
        for (const bool charged : {false, true}) {
          BatteryState state;
          state.hasBattery = true;
          state.percent = percent;
          state.isCharging = charging;
          state.pluggedIn = plugged;
          state.isCharged = charged;
          add(state);
        }
      }
    }
  }
  return names;
}

int opaquePixels(const QImage& image) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += qAlpha(image.pixel(x, y)) == 255 ? 1 : 0;
  }
  return count;
}

TEST(Symbols, ExistForEveryNameOfABatteryState) {
  Symbols symbols;
  const auto names = namesOfAllStates();
  EXPECT_EQ(names.size(), 10U);
  for (const auto& name : names) {
    for (const int side : {16, 22, 24, 48}) {
      const auto image = symbols.image(QString::fromStdString(name), side, Qt::black);
      ASSERT_TRUE(image) << name << " at " << side;
      EXPECT_EQ(image->size(), QSize(side, side));
      EXPECT_GT(opaquePixels(*image), side) << name << " at " << side;
      EXPECT_LT(opaquePixels(*image), side * side / 2) << name << " at " << side;
    }
  }
}

TEST(Symbols, DifferFromEachOther) {
  Symbols symbols;
  std::vector<QImage> seen;
  for (const auto& name : namesOfAllStates()) {
    const auto image = symbols.image(QString::fromStdString(name), 22, Qt::black);
    ASSERT_TRUE(image);
    for (const auto& other : seen) EXPECT_NE(*image, other) << name;
    seen.push_back(*image);
  }
}

TEST(Symbols, AreAbsentForAnUnknownName) {
  Symbols symbols;
  EXPECT_FALSE(symbols.contains(QStringLiteral("battery.42")));
  EXPECT_FALSE(symbols.contains(QString()));
  EXPECT_FALSE(symbols.image(QStringLiteral("battery.42"), 22, Qt::black));
}

// Down the middle of a battery there are horizontal edges only; none may fall between two pixels.
TEST(Symbols, HaveTheirEdgesOnWholePixels) {
  Symbols symbols;
  for (const char* name : {"battery.0", "battery.50", "battery.100", "battery.100percent"}) {
    for (const int side : {16, 22, 24, 32, 44, 48, 64}) {
      const auto image = symbols.image(QLatin1String(name), side, Qt::black);
      ASSERT_TRUE(image);
      for (int y = 0; y < side; ++y) {
        const int alpha = qAlpha(image->pixel(side * 5 / 16, y));
        EXPECT_TRUE(alpha == 0 || alpha == 255) << name << " at " << side << ", row " << y;
      }
    }
  }
}

TEST(Symbols, ArePaddedNotScaledBetweenTheirGrids) {
  Symbols symbols;
  const auto name = QStringLiteral("battery.75");
  const auto crisp = symbols.image(name, 24, Qt::black);
  const auto padded = symbols.image(name, 30, Qt::black);
  ASSERT_TRUE(crisp && padded);
  EXPECT_EQ(padded->copy(3, 3, 24, 24), *crisp);
  EXPECT_EQ(opaquePixels(*padded), opaquePixels(*crisp));
}

TEST(Symbols, AreDrawnInTheGivenColour) {
  Symbols symbols;
  const QColor colour(0xec, 0xee, 0xf1);
  const auto light = symbols.image(QStringLiteral("battery.100percent"), 22, colour);
  const auto dark = symbols.image(QStringLiteral("battery.100percent"), 22, Qt::black);
  ASSERT_TRUE(light && dark);
  EXPECT_EQ(light->pixelColor(11, 11), colour);
  EXPECT_EQ(dark->pixelColor(11, 11), QColor(Qt::black));
  EXPECT_EQ(light->pixelColor(0, 0).alpha(), 0);
}

TEST(Symbols, CrispSizesAreWholeMultiplesOfTheGrids) {
  EXPECT_EQ(Symbols::crispSide(10), 16);
  EXPECT_EQ(Symbols::crispSide(21), 16);
  EXPECT_EQ(Symbols::crispSide(22), 22);
  EXPECT_EQ(Symbols::crispSide(30), 24);
  EXPECT_EQ(Symbols::crispSide(46), 44);
  EXPECT_EQ(Symbols::crispSide(48), 48);
  EXPECT_EQ(Symbols::crispSide(64), 64);
}

}  // namespace
}  // namespace tollbeam
