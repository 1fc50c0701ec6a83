#include "platform/freedesktop/SteadyPowerSource.h"

#include <gtest/gtest.h>

#include <random>

namespace tollbeam {
namespace {

using namespace std::chrono_literals;
using Instant = SteadyPowerSource::Instant;

constexpr bool plugged = true;
constexpr bool unplugged = false;
constexpr Instant start{};

List battery(bool externalPower, double percent = 50) {
  return {Dictionary{{"Type", "InternalBattery"},
                     {"Current Capacity", percent},
                     {"Power Source State", externalPower ? "AC Power" : "Battery Power"}}};
}

bool isPlugged(const std::optional<List>& table) {
  return *find(*table->front().dictionary(), "Power Source State") == Value("AC Power");
}

class SteadyPowerSourceTest : public testing::Test {
 protected:
  SteadyPowerSourceTest() { EXPECT_EQ(at(0ms, battery(unplugged)), battery(unplugged)); }

  std::optional<List> at(std::chrono::milliseconds time, std::optional<List> table) {
    return steady.update(std::move(table), start + time);
  }

  SteadyPowerSource steady{{.calm = 5s, .still = 3s, .burst = 500ms}};
};

TEST_F(SteadyPowerSourceTest, BelievesTheFirstChangeAtOnce) {
  EXPECT_EQ(at(1s, battery(plugged)), battery(plugged));
  EXPECT_FALSE(steady.heldUntil());
}

TEST_F(SteadyPowerSourceTest, BelievesAChangeAfterACalmTimeAtOnce) {
  EXPECT_EQ(at(1s, battery(plugged)), battery(plugged));
  EXPECT_EQ(at(6s, battery(unplugged)), battery(unplugged));
}

TEST_F(SteadyPowerSourceTest, BelievesAChangeThatComesSoonerWhenItHasStoodStill) {
  EXPECT_EQ(at(1s, battery(plugged)), battery(plugged));
  EXPECT_EQ(at(5999ms, battery(unplugged)), battery(plugged));
  EXPECT_EQ(steady.heldUntil(), start + 8999ms);
  EXPECT_EQ(at(8998ms, battery(unplugged)), battery(plugged));
  EXPECT_EQ(at(8999ms, battery(unplugged)), battery(unplugged));
  EXPECT_FALSE(steady.heldUntil());
}

TEST_F(SteadyPowerSourceTest, HoldsBackTheTableAsAWholeAndThenGivesTheNewest) {
  EXPECT_EQ(at(1s, battery(plugged, 50)), battery(plugged, 50));
  EXPECT_EQ(at(2s, battery(unplugged, 49)), battery(plugged, 50));
  EXPECT_EQ(at(4s, battery(unplugged, 48)), battery(plugged, 50));
  EXPECT_EQ(at(5s, battery(unplugged, 47)), battery(unplugged, 47));
}

TEST_F(SteadyPowerSourceTest, GivesTheNewestTableOfTheBelievedSource) {
  EXPECT_EQ(at(1s, battery(plugged, 50)), battery(plugged, 50));
  EXPECT_EQ(at(2s, battery(unplugged, 49)), battery(plugged, 50));
  EXPECT_EQ(at(3s, battery(plugged, 51)), battery(plugged, 51));
  EXPECT_FALSE(steady.heldUntil());
}

TEST_F(SteadyPowerSourceTest, BeginsToWaitAnewAtEveryTouchOfTheContact) {
  EXPECT_EQ(at(1s, battery(plugged)), battery(plugged));
  EXPECT_EQ(at(2s, battery(unplugged)), battery(plugged));
  EXPECT_EQ(at(4s, battery(plugged)), battery(plugged));
  EXPECT_EQ(at(4500ms, battery(unplugged)), battery(plugged));
  EXPECT_EQ(steady.heldUntil(), start + 7500ms);
}

TEST_F(SteadyPowerSourceTest, BelievesOneChangeOfHalfAMinuteOfFlapsAndTheEnd) {
  int changes = 0;
  bool before = unplugged;
  for (auto time = 1s; time <= 31s; time += 1s) {
    const bool now = isPlugged(at(time, battery(time.count() % 2 == 1)));
    if (now != before) ++changes;
    before = now;
  }
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(at(32s, battery(unplugged)), battery(plugged));
  EXPECT_EQ(at(35s, battery(unplugged)), battery(unplugged));
}

TEST_F(SteadyPowerSourceTest, CountsTheCalmTimeFromTheBeliefInAHeldChange) {
  EXPECT_EQ(at(1s, battery(plugged)), battery(plugged));
  EXPECT_EQ(at(2s, battery(unplugged)), battery(plugged));
  EXPECT_EQ(at(5s, battery(unplugged)), battery(unplugged));
  EXPECT_EQ(at(9s, battery(plugged)), battery(unplugged));
}

TEST_F(SteadyPowerSourceTest, LetsAFlickerBeTakenBackOnce) {
  EXPECT_EQ(at(1000ms, battery(plugged)), battery(plugged));
  EXPECT_EQ(at(1499ms, battery(unplugged)), battery(unplugged));
  EXPECT_EQ(at(1600ms, battery(plugged)), battery(unplugged));
  EXPECT_EQ(at(1700ms, battery(unplugged)), battery(unplugged));
  EXPECT_EQ(at(1800ms, battery(plugged)), battery(unplugged));
  EXPECT_EQ(at(4800ms, battery(plugged)), battery(plugged));
  EXPECT_EQ(at(4900ms, battery(unplugged)), battery(plugged));
}

TEST_F(SteadyPowerSourceTest, BelievesTheLossOfTheBatteryAtOnceAndItsReturnToo) {
  EXPECT_EQ(at(1s, battery(plugged)), battery(plugged));
  EXPECT_EQ(at(2s, battery(unplugged)), battery(plugged));
  EXPECT_EQ(at(2100ms, List()), List());
  EXPECT_FALSE(steady.heldUntil());
  EXPECT_EQ(at(2200ms, std::nullopt), std::nullopt);
  EXPECT_EQ(at(2300ms, battery(unplugged)), battery(unplugged));
  EXPECT_EQ(at(2400ms, battery(plugged)), battery(plugged));
}

// What a reader may rely on however the contact flaps, told independently of how it is done.
class RandomFlaps : public testing::TestWithParam<unsigned> {};

TEST_P(RandomFlaps, AreFewChangesAndEndInTheTruth) {
  std::mt19937 random(GetParam());
  const auto pick = [&random](int from, int to) {
    return std::uniform_int_distribution(from, to)(random);
  };
  const SteadyPatience patience;
  SteadyPowerSource steady(patience);
  auto now = start;
  bool source = unplugged;
  bool believed = source;
  int number = 0;
  auto newest = battery(source, number);
  EXPECT_EQ(steady.update(newest, now), newest);
  // The times of the contact's own changes, and of those that a reader was shown.
  auto touched = start - 1h;
  auto shown = start - 1h;
  auto shownBefore = start - 2h;

  const auto look = [&] {
    const auto table = steady.update(newest, now);
    const bool isNewest = table == newest;
    EXPECT_EQ(steady.heldUntil().has_value(), !isNewest);
    EXPECT_EQ(isNewest, isPlugged(table) == source);
    EXPECT_TRUE(isNewest || now - touched < patience.still);
    if (isPlugged(table) == believed) return;
    believed = isPlugged(table);
    const bool tooSoon = now - shown < patience.still;
    // Only a flicker that nobody was told of, and only after a calm time.
    EXPECT_TRUE(!tooSoon || now - shown < patience.burst);
    EXPECT_TRUE(!tooSoon || shown - shownBefore >= patience.calm);
    shownBefore = shown;
    shown = now;
  };

  for (int step = 0; step < 2000; ++step) {
    const auto next =
        now + std::chrono::milliseconds(pick(0, 9) < 8 ? pick(1, 1500) : pick(1, 12000));
    if (const auto until = steady.heldUntil(); until && *until < next) {
      now = *until;
      look();
    }
    now = next;
    newest = battery(source, ++number);
    const bool calm = now - std::max(touched, shown) >= patience.calm;
    if (const bool changes = pick(0, 3) > 0; changes) {
      source = !source;
      newest = battery(source, number);
      touched = now;
      look();
      EXPECT_TRUE(!calm || believed == source);
    } else {
      look();
    }
  }
  now += patience.still;
  EXPECT_EQ(steady.update(newest, now), newest);
}

INSTANTIATE_TEST_SUITE_P(SteadyPowerSource, RandomFlaps, testing::Range(0U, 50U));

}  // namespace
}  // namespace tollbeam
