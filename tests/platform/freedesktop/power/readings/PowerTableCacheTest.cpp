#include "platform/freedesktop/power/readings/PowerTableCache.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/freedesktop/power/readings/BatteryPacks.h"
#include "platform/freedesktop/power/readings/Supplies.h"

namespace tollbeam {
namespace {

using namespace std::chrono_literals;
using namespace test;

UPowerAnswer daemonAt(double percent, int state = 2) {
  return {{{"Type", 2}, {"IsPresent", true}, {"Percentage", percent}, {"State", state}}, true};
}

UPowerAnswer daemonWithout() { return {{{"Type", 0}, {"IsPresent", false}}, false}; }

UPowerAnswer daemonWithUps() {
  return {{{"Type", 3}, {"IsPresent", true}, {"Percentage", 100.0}, {"State", 4}}, false};
}

std::optional<PowerSupplies> kernel(const PowerSupplies& supplies) { return supplies; }

constexpr std::nullopt_t noKernel = std::nullopt;

/// With a clock that only tests advance.
class Cache : public PowerTableCache {
 public:
  using PowerTableCache::PowerTableCache;

  Table update(const std::optional<UPowerAnswer>& upower,
               const std::optional<PowerSupplies>& supplies) {
    return PowerTableCache::update(upower, supplies, now);
  }

  /// Lets time pass until the table is due. Whether the daemon is to be queried then.
  bool reviewWhenDue() {
    EXPECT_TRUE(due());
    now = due().value_or(now);
    return review(now);
  }

  Time now{0};
};

const PowerSupplies laptopAt80{{"BAT0", energyPack()}};
const PowerSupplies glitching{
    {"BAT0", with(with(energyPack(), "status", "Unknown"), "capacity", "0")}};

std::optional<double> percentIn(const PowerTableCache::Table& table) {
  if (!table.sources || table.sources->empty()) return std::nullopt;
  return find(*table.sources->front().dictionary(), "Current Capacity")->number();
}

std::string textIn(const PowerTableCache::Table& table, std::string_view key) {
  if (!table.sources || table.sources->empty()) return "no source";
  const auto* value = find(*table.sources->front().dictionary(), key);
  return value && value->text() ? *value->text() : "";
}

TEST(PowerTableCache, PrefersTheDaemonsBattery) {
  Cache cache;
  const auto table = cache.update(daemonAt(79), kernel(laptopAt80));
  EXPECT_EQ(percentIn(table), 79);
  EXPECT_FALSE(table.fromKernel);
  EXPECT_EQ(percentIn(cache.update(daemonAt(55), noKernel)), 55);
  EXPECT_EQ(cache.due(), std::nullopt);
}

TEST(PowerTableCache, UsesTheKernelWithoutTheDaemon) {
  Cache cache;
  const auto table = cache.update(std::nullopt, kernel(laptopAt80));
  EXPECT_EQ(percentIn(table), 80);
  EXPECT_TRUE(table.fromKernel);
}

TEST(PowerTableCache, WithNeitherThereIsNoTable) {
  Cache cache;
  EXPECT_EQ(cache.update(std::nullopt, noKernel).sources, std::nullopt);
}

TEST(PowerTableCache, WithoutABatteryTheTableIsEmpty) {
  Cache cache;
  EXPECT_EQ(cache.update(daemonWithout(), kernel({})).sources, List());
  EXPECT_EQ(cache.update(std::nullopt, kernel({})).sources, List());
  EXPECT_EQ(cache.update(daemonWithout(), noKernel).sources, List());
}

TEST(PowerTableCache, UsesTheKernelForABatteryThatTheDaemonDoesNotSee) {
  Cache cache;
  EXPECT_EQ(percentIn(cache.update(daemonWithUps(), kernel(laptopAt80))), 80);
  const auto table = cache.update(daemonWithout(), kernel(laptopAt80));
  EXPECT_EQ(percentIn(table), 80);
  EXPECT_TRUE(table.fromKernel);
}

TEST(PowerTableCache, UsesTheDaemonForAnUninterruptibleSupplyAlone) {
  Cache cache;
  const auto table = cache.update(daemonWithUps(), kernel({}));
  EXPECT_EQ(percentIn(table), 100);
  EXPECT_FALSE(hasInternalBattery(*table.sources));
  EXPECT_FALSE(table.fromKernel);
}

TEST(PowerTableCache, KeepsTheTableDuringTheDaemonsGlitch) {
  Cache cache;
  const auto before = cache.update(daemonAt(55), noKernel).sources;
  EXPECT_EQ(cache.update(daemonAt(0, 0), kernel(laptopAt80)).sources, before);
  EXPECT_EQ(percentIn(cache.update(daemonAt(54), noKernel)), 54);
}

TEST(PowerTableCache, TheDaemonsGlitchOfAnEmptyBayIsNoBattery) {
  Cache cache;
  EXPECT_EQ(percentIn(cache.update(daemonAt(55), noKernel)), 55);
  const auto table =
      cache.update(daemonAt(0, 3), kernel({{"BAT0", with(energyPack(), "present", "0")}}));
  EXPECT_EQ(table.sources, List());
  EXPECT_TRUE(table.fromKernel);
}

TEST(PowerTableCache, TheDaemonsGlitchAtTheStartIsNoBatteryUnlessTheKernelHasOne) {
  EXPECT_EQ(Cache().update(daemonAt(0, 0), kernel(glitching)).sources, List());
  EXPECT_EQ(Cache().update(daemonAt(0, 0), kernel({})).sources, List());
  EXPECT_EQ(percentIn(Cache().update(daemonAt(0, 0), kernel(laptopAt80))), 80);
}

TEST(PowerTableCache, DistinguishesABatteryWithoutAReadingFromNoBattery) {
  Cache cache;
  EXPECT_TRUE(cache.update(daemonAt(0, 0), kernel(glitching)).isGlitch);
  EXPECT_TRUE(cache.update(daemonAt(0, 0), noKernel).isGlitch);
  EXPECT_TRUE(cache.update(std::nullopt, kernel(glitching)).isGlitch);
  EXPECT_FALSE(cache.update(daemonAt(15), kernel(glitching)).isGlitch);
  EXPECT_FALSE(cache.update(daemonAt(0, 0), kernel(glitching)).isGlitch);
}

TEST(PowerTableCache, NoBatteryAndNoAnswerAreNoGlitch) {
  EXPECT_FALSE(Cache().update(daemonWithout(), kernel(glitching)).isGlitch);
  EXPECT_FALSE(Cache().update(daemonAt(0, 0), kernel({})).isGlitch);
  EXPECT_FALSE(Cache().update(std::nullopt, kernel({})).isGlitch);
  EXPECT_FALSE(Cache().update(std::nullopt, noKernel).isGlitch);
  EXPECT_FALSE(Cache().update(daemonAt(0, 0), kernel(laptopAt80)).isGlitch);
}

TEST(PowerTableCache, AGlitchDoesNotKeepTheAbsenceOfABattery) {
  Cache cache;
  EXPECT_EQ(cache.update(daemonWithout(), kernel({})).sources, List());
  EXPECT_EQ(percentIn(cache.update(daemonAt(0, 0), kernel(laptopAt80))), 80);
}

TEST(PowerTableCache, KeepsTheTableDuringTheKernelsGlitch) {
  Cache cache;
  const auto before = cache.update(std::nullopt, kernel(laptopAt80)).sources;
  EXPECT_EQ(cache.update(std::nullopt, kernel(glitching)).sources, before);
}

TEST(PowerTableCache, KeepsTheTableWhenTheDaemonGoesDuringAGlitch) {
  Cache cache;
  const auto before = cache.update(daemonAt(55), noKernel).sources;
  EXPECT_EQ(cache.update(std::nullopt, kernel(glitching)).sources, before);
}

TEST(PowerTableCache, ARemovedBatteryIsForgotten) {
  Cache cache;
  EXPECT_EQ(percentIn(cache.update(daemonAt(55), noKernel)), 55);
  EXPECT_EQ(cache.update(daemonWithout(), kernel({})).sources, List());
  EXPECT_EQ(cache.update(daemonAt(0, 0), kernel(glitching)).sources, List());
}

TEST(PowerTableCache, ReportsAnEmptyBatteryAsEmpty) {
  Cache cache;
  EXPECT_EQ(percentIn(cache.update(daemonAt(0, 2), noKernel)), 0);
}

TEST(PowerTableCache, TheDaemonsBatteryHasTheNameOfTheOnePack) {
  EXPECT_EQ(textIn(Cache().update(daemonAt(80), kernel(laptopAt80)), "Name"), "DELL 70N2F95");
  EXPECT_EQ(textIn(Cache().update(daemonAt(80), noKernel), "Name"), "");
  const PowerSupplies two{{"BAT0", energyPack()}, {"BAT1", energyPack()}};
  EXPECT_EQ(textIn(Cache().update(daemonAt(80), kernel(two)), "Name"), "");
  auto named = daemonAt(80);
  named.device.emplace("Model", "its own");
  EXPECT_EQ(textIn(Cache().update(named, kernel(laptopAt80)), "Name"), "its own");
}

// The answers of upowerd 0.99.20 to each of these, compared with the reading of the kernel.
TEST(PowerTableCache, DaemonAndKernelAgreeOnExternalPower) {
  struct Charge {
    const char* status;
    int state;
  };
  const PowerSupplies out{{"AC", mains("0")}};
  const PowerSupplies in{{"AC", mains("1")}};
  const PowerSupplies allOut{{"AC", mains("0")}, {"ucsi", usbCharger("0")}};
  const PowerSupplies oneIn{{"AC", mains("0")}, {"ucsi", usbCharger("1")}};
  for (const auto& chargers : {PowerSupplies(), out, in, allOut, oneIn}) {
    const bool isIn = externalPowerConnected(chargers).value_or(false);
    for (const auto& [status, state] :
         {Charge{"Charging", 1}, Charge{"Discharging", 2}, Charge{"Full", 4},
          Charge{"Not charging", 5}, Charge{"Unknown", isIn ? 1 : 2}}) {
      auto supplies = chargers;
      supplies.emplace("BAT0", with(energyPack(), "status", status));
      auto daemon = daemonAt(80, state);
      daemon.onBattery = state == 2 && !isIn;
      const auto daemons = Cache().update(daemon, kernel(supplies));
      const auto kernels = Cache().update(std::nullopt, kernel(supplies));
      const auto expected = chargers.empty() ? state != 2 : isIn || state == 1;
      for (const auto& table : {daemons, kernels}) {
        EXPECT_EQ(textIn(table, "Power Source State"), expected ? "AC Power" : "Battery Power")
            << status << ' ' << chargers.size() << ' ' << isIn << ' ' << table.fromKernel;
      }
      EXPECT_FALSE(daemons.fromKernel) << status;
    }
  }
}

// For every combination of the states of two packs.
TEST(PowerTableCache, ChargersThatAreOutAreNoExternalPowerUnlessAPackCharges) {
  const auto statuses = {"Charging", "Discharging", "Full", "Not charging", "Unknown"};
  for (const auto* one : statuses) {
    for (const auto* other : statuses) {
      const PowerSupplies supplies{{"AC", mains("0")},
                                   {"BAT0", with(energyPack(), "status", one)},
                                   {"BAT1", with(energyPack(), "status", other)}};
      const auto state = combinedState(internalBatteries(supplies));
      const int daemonsState = state == ChargeState::charging      ? 1
                               : state == ChargeState::discharging ? 2
                               : state == ChargeState::full        ? 4
                                                                   : 5;
      auto daemon = daemonAt(80, daemonsState);
      daemon.onBattery = daemonsState == 2;
      const auto expected = state == ChargeState::charging ? "AC Power" : "Battery Power";
      EXPECT_EQ(textIn(Cache().update(daemon, kernel(supplies)), "Power Source State"), expected);
      EXPECT_EQ(textIn(Cache().update(std::nullopt, kernel(supplies)), "Power Source State"),
                expected);
    }
  }
}

// A daemon that starts takes a battery whose state is unknown for one that charges.
TEST(PowerTableCache, ADaemonsGuessOfChargingFallsWithTheChargerOut) {
  auto guess = daemonAt(80, 1);
  guess.onBattery = false;
  const auto table = Cache().update(
      guess, kernel({{"AC", mains("0")}, {"BAT0", with(energyPack(), "status", "Unknown")}}));
  EXPECT_EQ(textIn(table, "Power Source State"), "Battery Power");
  EXPECT_FALSE(find(*table.sources->front().dictionary(), "Is Charging")->flag().value_or(true));
}

TEST(PowerTableCache, ADaemonThatHangsIsReplacedByTheKernel) {
  Cache cache;
  EXPECT_EQ(percentIn(cache.update(daemonAt(55), kernel(laptopAt80))), 55);
  ASSERT_TRUE(cache.reviewWhenDue());
  EXPECT_EQ(cache.now, 120s);
  auto table = cache.update(daemonAt(55), kernel(laptopAt80));
  EXPECT_EQ(percentIn(table), 55);
  EXPECT_TRUE(table.fromKernel);  // Soon.
  EXPECT_FALSE(cache.reviewWhenDue());
  EXPECT_EQ(cache.now, 130s);
  table = cache.update(daemonAt(55), kernel(laptopAt80));
  EXPECT_EQ(percentIn(table), 80);
  EXPECT_TRUE(table.fromKernel);
  cache.heardFromDaemon();
  EXPECT_EQ(percentIn(cache.update(daemonAt(55), kernel(laptopAt80))), 55);
}

TEST(PowerTableCache, KeepsADaemonThatAnswersWhateverTheKernelReports) {
  Cache cache;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(percentIn(cache.update(daemonAt(55), kernel(laptopAt80))), 55);
    ASSERT_TRUE(cache.reviewWhenDue());
    cache.heardFromDaemon();
    EXPECT_EQ(percentIn(cache.update(daemonAt(55), kernel(laptopAt80))), 55);
  }
}

TEST(PowerTableCache, ADaemonIsDoubtedForItsChargeItsStateAndItsCharger) {
  const auto doubts = [](UPowerAnswer daemon, const PowerSupplies& supplies) {
    Cache cache;
    EXPECT_EQ(percentIn(cache.update(daemon, kernel(supplies))), 80);
    return cache.due().has_value();
  };
  const PowerSupplies laptop{{"AC", mains("0")}, {"BAT0", energyPack()}};
  const auto battery = [&](const char* attribute, const char* text) {
    return PowerSupplies{{"AC", mains("0")}, {"BAT0", with(energyPack(), attribute, text)}};
  };
  EXPECT_FALSE(doubts(daemonAt(80), laptop));
  EXPECT_FALSE(doubts(daemonAt(80), battery("capacity", "81")));
  EXPECT_FALSE(doubts(daemonAt(80), battery("status", "Unknown")));
  EXPECT_FALSE(doubts(daemonAt(80, 0), laptop));
  EXPECT_TRUE(doubts(daemonAt(80), battery("capacity", "78")));
  EXPECT_TRUE(doubts(daemonAt(80), battery("capacity", "82")));
  EXPECT_TRUE(doubts(daemonAt(80), battery("status", "Charging")));
  EXPECT_TRUE(doubts(daemonAt(80), battery("status", "Not charging")));
  EXPECT_TRUE(doubts(daemonAt(80), {{"AC", mains("1")}, {"BAT0", energyPack()}}));
  EXPECT_TRUE(doubts(daemonAt(80), {{"AC", mains("0")}}));
}

TEST(PowerTableCache, ABatteryTakenOutBesideADaemonThatHangsIsGone) {
  Cache cache;
  EXPECT_EQ(percentIn(cache.update(daemonAt(80), kernel({}))), 80);
  ASSERT_TRUE(cache.reviewWhenDue());
  EXPECT_EQ(percentIn(cache.update(daemonAt(80), kernel({}))), 80);
  EXPECT_FALSE(cache.reviewWhenDue());
  EXPECT_EQ(cache.update(daemonAt(80), kernel({})).sources, List());
}

TEST(PowerTableCache, SteadiesAFlappingContactOfDaemonAndKernel) {
  for (const bool byDaemon : {true, false}) {
    Cache cache;
    const auto read = [&](bool in) {
      auto daemon = daemonAt(80, in ? 1 : 2);
      daemon.onBattery = !in;
      const PowerSupplies supplies{
          {"AC", mains(in ? "1" : "0")},
          {"BAT0", with(energyPack(), "status", in ? "Charging" : "Discharging")}};
      const auto table =
          cache.update(byDaemon ? std::optional(daemon) : std::nullopt, kernel(supplies));
      EXPECT_EQ(textIn(table, "Power Source State") == "AC Power",
                find(*table.sources->front().dictionary(), "Is Charging")->flag());
      return textIn(table, "Power Source State");
    };
    EXPECT_EQ(read(false), "Battery Power");
    EXPECT_EQ(read(true), "AC Power");
    for (int i = 0; i < 200; ++i) {
      cache.now += 700ms;
      EXPECT_EQ(read(i % 2 == 1), "AC Power");
    }
    cache.now += 700ms;
    EXPECT_EQ(read(false), "AC Power");
    ASSERT_FALSE(cache.reviewWhenDue());
    EXPECT_EQ(read(false), "Battery Power");
    EXPECT_EQ(cache.due(), std::nullopt);
  }
}

TEST(PowerTableCache, NothingIsDueAfterABatteryIsTakenOutWhileTheContactFlaps) {
  for (const PowerSupplies& without : {PowerSupplies{}, PowerSupplies{{"AC", mains("1")}}}) {
    Cache cache;
    for (const char* online : {"0", "1", "0"}) {
      cache.now += 1s;
      (void)cache.update(std::nullopt, kernel({{"AC", mains(online)}, {"BAT0", energyPack()}}));
    }
    ASSERT_TRUE(cache.due());
    (void)cache.update(std::nullopt, kernel(without));
    EXPECT_EQ(cache.due(), std::nullopt);
  }
}

TEST(PowerTableCache, AContactThatIsForgottenCountsAtOnce) {
  Cache cache;
  const auto read = [&](bool in) {
    return textIn(
        cache.update(std::nullopt, kernel({{"AC", mains(in ? "1" : "0")}, {"BAT0", energyPack()}})),
        "Power Source State");
  };
  EXPECT_EQ(read(false), "Battery Power");
  EXPECT_EQ(read(true), "AC Power");
  cache.now += 1s;
  EXPECT_EQ(read(false), "AC Power");
  cache.forgetContact();
  EXPECT_EQ(read(false), "Battery Power");
}

}  // namespace
}  // namespace tollbeam
