#include "platform/freedesktop/power/readings/SteadyContact.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

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
  bool passesOnPlugged(const SourceReading& reading, Time now) {
    const auto passedOn = contact.steady(reading, now);
    // State and estimates always fit external power.
    EXPECT_EQ(passedOn.state == ChargeState::charging, passedOn.onExternalPower);
    EXPECT_EQ(passedOn.minutesToFull.has_value(), passedOn.onExternalPower);
    EXPECT_EQ(passedOn.minutesToEmpty.has_value(), !passedOn.onExternalPower);
    return passedOn.onExternalPower;
  }

  SteadyContact contact;
};

TEST_F(SteadyContactTest, PassesTheFirstReadingAndTheFirstChangeOnAtOnce) {
  EXPECT_FALSE(passesOnPlugged(unplugged(), 10s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 11s));
  EXPECT_EQ(contact.due(), std::nullopt);
}

TEST_F(SteadyContactTest, PassesOnEachChangeAfterThreeSteadySeconds) {
  EXPECT_FALSE(passesOnPlugged(unplugged(), 0s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 1s));
  EXPECT_FALSE(passesOnPlugged(unplugged(), 4s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 7s));
}

TEST_F(SteadyContactTest, FollowsABriefTouchWhileItSettles) {
  EXPECT_FALSE(passesOnPlugged(unplugged(), 0s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 1000ms));
  EXPECT_FALSE(passesOnPlugged(unplugged(), 1100ms));
  EXPECT_EQ(contact.due(), std::nullopt);
}

TEST_F(SteadyContactTest, HoldsASecondChangeUntilItHasBeenSteadyForThreeSeconds) {
  EXPECT_FALSE(passesOnPlugged(unplugged(), 0s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 1000ms));
  EXPECT_TRUE(passesOnPlugged(unplugged(), 2000ms));
  EXPECT_EQ(contact.due(), 5000ms);
  EXPECT_TRUE(passesOnPlugged(unplugged(), 4999ms));
  EXPECT_FALSE(passesOnPlugged(unplugged(), 5000ms));
  EXPECT_EQ(contact.due(), std::nullopt);
}

TEST_F(SteadyContactTest, CountsFromTheLastChange) {
  EXPECT_FALSE(passesOnPlugged(unplugged(), 0s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 1s));
  EXPECT_TRUE(passesOnPlugged(unplugged(), 2s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 4s));
  EXPECT_TRUE(passesOnPlugged(unplugged(), 6s));
  EXPECT_EQ(contact.due(), 9s);
  EXPECT_FALSE(passesOnPlugged(unplugged(), 9s));
}

TEST_F(SteadyContactTest, NeverHoldsTheChargeBack) {
  EXPECT_EQ(contact.steady(unplugged(50), 0s).percent, 50);
  EXPECT_EQ(contact.steady(plugged(51), 1s).percent, 51);
  const auto held = contact.steady(unplugged(49), 2s);
  EXPECT_TRUE(held.onExternalPower);
  EXPECT_EQ(held.percent, 49);
}

TEST_F(SteadyContactTest, PassesOnAStateThatFollowsTheFirstChangeLate) {
  auto notYet = unplugged();
  notYet.onExternalPower = true;
  EXPECT_EQ(contact.steady(unplugged(), 0s).state, ChargeState::discharging);
  EXPECT_EQ(contact.steady(notYet, 1s).state, ChargeState::discharging);
  EXPECT_EQ(contact.steady(plugged(), 3s).state, ChargeState::charging);
}

TEST_F(SteadyContactTest, TakesTheNextReadingAsItIsAfterForgetting) {
  EXPECT_FALSE(passesOnPlugged(unplugged(), 0s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 1s));
  EXPECT_TRUE(passesOnPlugged(unplugged(), 2s));
  contact.forget();
  EXPECT_EQ(contact.due(), std::nullopt);
  EXPECT_FALSE(passesOnPlugged(unplugged(), 2s));
  EXPECT_TRUE(passesOnPlugged(plugged(), 3s));
}

// Its contacts are shorter than the pauses between them.
TEST_F(SteadyContactTest, PassesOnAContactThatNeverRestsOnceAMinute) {
  EXPECT_FALSE(passesOnPlugged(unplugged(), 0s));
  Time now = 1s;
  for (; now < 61s; now += 2s) {
    EXPECT_TRUE(passesOnPlugged(plugged(), now)) << now.count();
    EXPECT_TRUE(passesOnPlugged(unplugged(), now + 900ms)) << now.count();
    EXPECT_LE(contact.due(), 61s);
  }
  EXPECT_EQ(contact.due(), 61s);
  EXPECT_FALSE(passesOnPlugged(unplugged(), 61s));
  for (; now < 121s; now += 2s) {
    EXPECT_FALSE(passesOnPlugged(plugged(), now + 500ms)) << now.count();
    EXPECT_FALSE(passesOnPlugged(unplugged(), now + 900ms)) << now.count();
  }
  EXPECT_TRUE(passesOnPlugged(plugged(), 121s));
  EXPECT_EQ(contact.due(), 124s);
}

// Random contacts, read at each change and in between.
TEST_F(SteadyContactTest, PassesOnAFlappingContactRarelyAndItsLastStateAlways) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    std::mt19937 random(seed);
    const auto upTo = [&random](int most) {
      return std::uniform_int_distribution<int>(1, most)(random);
    };
    SteadyContact worn;
    bool passedOn = worn.steady(unplugged(), 0ms).onExternalPower;
    bool external = false;
    int changes = 0;
    const Time start = 10s;
    Time now = start;
    Time lastChange = now;
    // Never steady for three seconds.
    const int longest = upTo(2900);
    for (int i = 0; i < 200; ++i) {
      external = !external;
      lastChange = now;
      const Time next = now + Time(upTo(longest));
      for (; now < next; now = std::min(next, now + Time(upTo(400)))) {
        const bool before = std::exchange(
            passedOn, worn.steady(external ? plugged() : unplugged(), now).onExternalPower);
        // Except while the first change settles.
        if (passedOn != before && now - start > 500ms) ++changes;
      }
    }
    EXPECT_LE(changes, (now - start) / 60s) << seed;
    // A minute of flapping may end before three steady seconds have passed, and then once more.
    Time latest = lastChange;
    while (const auto due = worn.due()) {
      ASSERT_GT(*due, latest) << seed;
      ASSERT_LE(*due - lastChange, 3s) << seed;
      passedOn = worn.steady(external ? plugged() : unplugged(), *due).onExternalPower;
      latest = *due;
    }
    EXPECT_EQ(passedOn, external) << seed;
  }
}

}  // namespace
}  // namespace tollbeam
