#include "platform/freedesktop/PowerTableCache.h"

#include <gtest/gtest.h>

#include "platform/freedesktop/Supplies.h"

namespace tollbeam {
namespace {

using namespace test;

UPowerAnswer daemonAt(double percent, int state = 2) {
  return {{{"Type", 2}, {"IsPresent", true}, {"Percentage", percent}, {"State", state}}, true};
}

UPowerAnswer daemonWithout() { return {{{"Type", 0}, {"IsPresent", false}}, false}; }

UPowerAnswer daemonWithUps() {
  return {{{"Type", 3}, {"IsPresent", true}, {"Percentage", 100.0}, {"State", 4}}, false};
}

PowerTableCache::Supplies kernel(const PowerSupplies& supplies) {
  return [supplies] { return std::optional(supplies); };
}

std::optional<PowerSupplies> noKernel() { return std::nullopt; }

const PowerSupplies laptopAt80{{"BAT0", energyPack()}};
const PowerSupplies glitching{
    {"BAT0", with(with(energyPack(), "status", "Unknown"), "capacity", "0")}};

std::optional<double> percentIn(const PowerTableCache::Table& table) {
  if (!table.sources || table.sources->empty()) return std::nullopt;
  return find(*table.sources->front().dictionary(), "Current Capacity")->number();
}

TEST(PowerTableCache, TheDaemonsBatteryIsTakenWithoutAskingTheKernel) {
  PowerTableCache cache;
  bool asked = false;
  const auto table = cache.update(daemonAt(55), [&asked]() -> std::optional<PowerSupplies> {
    asked = true;
    return std::nullopt;
  });
  EXPECT_EQ(percentIn(table), 55);
  EXPECT_FALSE(table.fromKernel);
  EXPECT_FALSE(asked);
}

TEST(PowerTableCache, WithoutTheDaemonTheKernelTells) {
  PowerTableCache cache;
  const auto table = cache.update(std::nullopt, kernel(laptopAt80));
  EXPECT_EQ(percentIn(table), 80);
  EXPECT_TRUE(table.fromKernel);
}

TEST(PowerTableCache, WithNeitherThereIsNoTable) {
  PowerTableCache cache;
  EXPECT_EQ(cache.update(std::nullopt, noKernel).sources, std::nullopt);
}

TEST(PowerTableCache, WithoutABatteryTheTableIsEmpty) {
  PowerTableCache cache;
  EXPECT_EQ(cache.update(daemonWithout(), kernel({})).sources, List());
  EXPECT_EQ(cache.update(std::nullopt, kernel({})).sources, List());
  EXPECT_EQ(cache.update(daemonWithout(), noKernel).sources, List());
}

TEST(PowerTableCache, ABatteryThatTheDaemonDoesNotSeeIsTheKernels) {
  PowerTableCache cache;
  EXPECT_EQ(percentIn(cache.update(daemonWithUps(), kernel(laptopAt80))), 80);
  const auto table = cache.update(daemonWithout(), kernel(laptopAt80));
  EXPECT_EQ(percentIn(table), 80);
  EXPECT_TRUE(table.fromKernel);
}

TEST(PowerTableCache, AnUninterruptibleSupplyAloneIsTheDaemons) {
  PowerTableCache cache;
  const auto table = cache.update(daemonWithUps(), kernel({}));
  EXPECT_EQ(percentIn(table), 100);
  EXPECT_FALSE(hasInternalBattery(*table.sources));
  EXPECT_FALSE(table.fromKernel);
}

TEST(PowerTableCache, TheDaemonsGlitchLeavesWhatWasKnown) {
  PowerTableCache cache;
  const auto before = cache.update(daemonAt(55), noKernel).sources;
  EXPECT_EQ(cache.update(daemonAt(0, 0), kernel(laptopAt80)).sources, before);
  EXPECT_EQ(percentIn(cache.update(daemonAt(54), noKernel)), 54);
}

TEST(PowerTableCache, TheDaemonsGlitchAboutABayThatIsEmptyIsNoBattery) {
  PowerTableCache cache;
  EXPECT_EQ(percentIn(cache.update(daemonAt(55), noKernel)), 55);
  const auto table =
      cache.update(daemonAt(0, 3), kernel({{"BAT0", with(energyPack(), "present", "0")}}));
  EXPECT_EQ(table.sources, List());
  EXPECT_TRUE(table.fromKernel);
}

TEST(PowerTableCache, TheDaemonsGlitchAtTheStartIsNoBatteryUnlessTheKernelHasOne) {
  EXPECT_EQ(PowerTableCache().update(daemonAt(0, 0), kernel(glitching)).sources, List());
  EXPECT_EQ(PowerTableCache().update(daemonAt(0, 0), kernel({})).sources, List());
  EXPECT_EQ(percentIn(PowerTableCache().update(daemonAt(0, 0), kernel(laptopAt80))), 80);
}

TEST(PowerTableCache, ABatteryThatNobodyHasToldOfYetIsToldFromNone) {
  PowerTableCache cache;
  EXPECT_TRUE(cache.update(daemonAt(0, 0), kernel(glitching)).isGlitch);
  EXPECT_TRUE(cache.update(daemonAt(0, 0), noKernel).isGlitch);
  EXPECT_TRUE(cache.update(std::nullopt, kernel(glitching)).isGlitch);
  EXPECT_FALSE(cache.update(daemonAt(15), kernel(glitching)).isGlitch);
  EXPECT_FALSE(cache.update(daemonAt(0, 0), kernel(glitching)).isGlitch);
}

TEST(PowerTableCache, NoBatteryAndNoAnswerAreNoGlitch) {
  EXPECT_FALSE(PowerTableCache().update(daemonWithout(), kernel(glitching)).isGlitch);
  EXPECT_FALSE(PowerTableCache().update(daemonAt(0, 0), kernel({})).isGlitch);
  EXPECT_FALSE(PowerTableCache().update(std::nullopt, kernel({})).isGlitch);
  EXPECT_FALSE(PowerTableCache().update(std::nullopt, noKernel).isGlitch);
  EXPECT_FALSE(PowerTableCache().update(daemonAt(0, 0), kernel(laptopAt80)).isGlitch);
}

TEST(PowerTableCache, NoBatteryIsNothingThatAGlitchCouldKeep) {
  PowerTableCache cache;
  EXPECT_EQ(cache.update(daemonWithout(), kernel({})).sources, List());
  EXPECT_EQ(percentIn(cache.update(daemonAt(0, 0), kernel(laptopAt80))), 80);
}

TEST(PowerTableCache, TheKernelsGlitchLeavesWhatWasKnown) {
  PowerTableCache cache;
  const auto before = cache.update(std::nullopt, kernel(laptopAt80)).sources;
  EXPECT_EQ(cache.update(std::nullopt, kernel(glitching)).sources, before);
}

TEST(PowerTableCache, ADaemonThatGoesAwayInAGlitchTakesNothingAlong) {
  PowerTableCache cache;
  const auto before = cache.update(daemonAt(55), noKernel).sources;
  EXPECT_EQ(cache.update(std::nullopt, kernel(glitching)).sources, before);
}

TEST(PowerTableCache, ARemovedBatteryIsForgotten) {
  PowerTableCache cache;
  EXPECT_EQ(percentIn(cache.update(daemonAt(55), noKernel)), 55);
  EXPECT_EQ(cache.update(daemonWithout(), kernel({})).sources, List());
  EXPECT_EQ(cache.update(daemonAt(0, 0), kernel(glitching)).sources, List());
}

TEST(PowerTableCache, AnEmptyBatteryIsToldAsEmpty) {
  PowerTableCache cache;
  EXPECT_EQ(percentIn(cache.update(daemonAt(0, 2), noKernel)), 0);
}

}  // namespace
}  // namespace tollbeam
