#include "platform/freedesktop/power/readings/SteadyContact.h"

#include <gtest/gtest.h>

#include <random>

namespace tollbeam {
namespace {

using namespace std::chrono_literals;
using Time = SteadyContact::Time;

SourceReading plugged(double percent = 50) {
  SourceReading reading;
  reading.percent = percent;
  reading.state = ChargeState::charging;
  reading.onExternalPower = true;
  reading.minutesToFull = 60;
  return reading;
}

SourceReading unplugged(double percent = 50) {
  SourceReading reading;
  reading.percent = percent;
  reading.state = ChargeState::discharging;
  reading.minutesToEmpty = 120;
  return reading;
}

class SteadyContactTest : public testing::Test {
 protected:
  bool tellsPlugged(const SourceReading& reading, Time now) {
    const auto told = contact.steady(reading, now);
    // The battery never does what does not fit the power.
    EXPECT_EQ(told.state == ChargeState::charging, told.onExternalPower);
    EXPECT_EQ(told.minutesToFull.has_value(), told.onExternalPower);
    EXPECT_EQ(told.minutesToEmpty.has_value(), !told.onExternalPower);
    return told.onExternalPower;
  }

  SteadyContact contact;
};

TEST_F(SteadyContactTest, TellsTheFirstReadingAndTheFirstChangeAtOnce) {
  EXPECT_FALSE(tellsPlugged(unplugged(), 10s));
  EXPECT_TRUE(tellsPlugged(plugged(), 11s));
  EXPECT_EQ(contact.due(), std::nullopt);
}

TEST_F(SteadyContactTest, TellsEachChangeThatComesAfterThreeSteadySeconds) {
  EXPECT_FALSE(tellsPlugged(unplugged(), 0s));
  EXPECT_TRUE(tellsPlugged(plugged(), 1s));
  EXPECT_FALSE(tellsPlugged(unplugged(), 4s));
  EXPECT_TRUE(tellsPlugged(plugged(), 7s));
}

TEST_F(SteadyContactTest, FollowsABriefTouchWhileItSettles) {
  EXPECT_FALSE(tellsPlugged(unplugged(), 0s));
  EXPECT_TRUE(tellsPlugged(plugged(), 1000ms));
  EXPECT_FALSE(tellsPlugged(unplugged(), 1100ms));
  EXPECT_EQ(contact.due(), std::nullopt);
}

TEST_F(SteadyContactTest, HoldsASecondChangeUntilItHasBeenSteadyForThreeSeconds) {
  EXPECT_FALSE(tellsPlugged(unplugged(), 0s));
  EXPECT_TRUE(tellsPlugged(plugged(), 1000ms));
  EXPECT_TRUE(tellsPlugged(unplugged(), 2000ms));
  EXPECT_EQ(contact.due(), 5000ms);
  EXPECT_TRUE(tellsPlugged(unplugged(), 4999ms));
  EXPECT_FALSE(tellsPlugged(unplugged(), 5000ms));
  EXPECT_EQ(contact.due(), std::nullopt);
}

TEST_F(SteadyContactTest, CountsFromTheLastChange) {
  EXPECT_FALSE(tellsPlugged(unplugged(), 0s));
  EXPECT_TRUE(tellsPlugged(plugged(), 1s));
  EXPECT_TRUE(tellsPlugged(unplugged(), 2s));
  EXPECT_TRUE(tellsPlugged(plugged(), 4s));
  EXPECT_TRUE(tellsPlugged(unplugged(), 6s));
  EXPECT_EQ(contact.due(), 9s);
  EXPECT_FALSE(tellsPlugged(unplugged(), 9s));
}

TEST_F(SteadyContactTest, NeverHoldsTheChargeBack) {
  EXPECT_EQ(contact.steady(unplugged(50), 0s).percent, 50);
  EXPECT_EQ(contact.steady(plugged(51), 1s).percent, 51);
  const auto held = contact.steady(unplugged(49), 2s);
  EXPECT_TRUE(held.onExternalPower);
  EXPECT_EQ(held.percent, 49);
}

TEST_F(SteadyContactTest, LetsTheBatteryFollowTheFirstChangeLate) {
  auto notYet = unplugged();
  notYet.onExternalPower = true;
  EXPECT_EQ(contact.steady(unplugged(), 0s).state, ChargeState::discharging);
  EXPECT_EQ(contact.steady(notYet, 1s).state, ChargeState::discharging);
  EXPECT_EQ(contact.steady(plugged(), 3s).state, ChargeState::charging);
}

TEST_F(SteadyContactTest, TakesTheNextReadingAsItIsAfterForgetting) {
  EXPECT_FALSE(tellsPlugged(unplugged(), 0s));
  EXPECT_TRUE(tellsPlugged(plugged(), 1s));
  EXPECT_TRUE(tellsPlugged(unplugged(), 2s));
  contact.forget();
  EXPECT_EQ(contact.due(), std::nullopt);
  EXPECT_FALSE(tellsPlugged(unplugged(), 2s));
  EXPECT_TRUE(tellsPlugged(plugged(), 3s));
}

// Contacts of all kinds, read at each change, when due, and now and then.
TEST_F(SteadyContactTest, TellsAFlappingContactRarelyAndItsLastStateAlways) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    std::mt19937 random(seed);
    const auto upTo = [&random](int most) {
      return std::uniform_int_distribution<int>(1, most)(random);
    };
    SteadyContact worn;
    bool told = worn.steady(unplugged(), 0ms).onExternalPower;
    bool external = false;
    int changes = 0;
    Time now = 10s;
    Time change = now;
    const int longest = upTo(2900);
    for (int i = 0; i < 200; ++i) {
      external = !external;
      change = now;
      for (const Time next = now + Time(upTo(longest)); now < next; now += Time(upTo(400))) {
        const bool before = std::exchange(
            told, worn.steady(external ? plugged() : unplugged(), now).onExternalPower);
        // The settling of the first change apart, nothing is told while it flaps.
        if (told != before && now - 10s > 500ms) ++changes;
      }
    }
    // Each gap is shorter than three seconds but for the last reading of a gap, which may be late.
    EXPECT_LE(changes, longest < 2500 ? 0 : 200) << seed;
    if (const auto due = worn.due()) {
      EXPECT_EQ(*due - change, 3s) << seed;
      told = worn.steady(external ? plugged() : unplugged(), *due).onExternalPower;
    }
    EXPECT_EQ(told, external) << seed;
    EXPECT_EQ(worn.due(), std::nullopt) << seed;
  }
}

}  // namespace
}  // namespace tollbeam
