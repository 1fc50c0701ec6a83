#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

#include "platform/freedesktop/LocalCalendar.h"
#include "platform/freedesktop/SystemClock.h"
#include "platform/freedesktop/support/Sandbox.h"

namespace tollbeam {

namespace {

// 2024-03-31 00:59:59 UTC: a second later Berlin skips from two to three o'clock.
constexpr double kBeforeSummerTime = 1711846799;

}  // namespace

TEST(LocalCalendar, TellsTheLocalTime) {
  const test::Environment zone("TZ", "Europe/Berlin");
  const LocalCalendar calendar;
  EXPECT_EQ(calendar.timeOfDay({0}), (TimeOfDay{1, 0}));
  EXPECT_EQ(calendar.timeOfDay({59.999}), (TimeOfDay{1, 0}));
  EXPECT_EQ(calendar.timeOfDay({60}), (TimeOfDay{1, 1}));
  EXPECT_EQ(calendar.timeOfDay({-0.5}), (TimeOfDay{0, 59}));
}

TEST(LocalCalendar, KnowsSummerTime) {
  const test::Environment zone("TZ", "Europe/Berlin");
  const LocalCalendar calendar;
  EXPECT_EQ(calendar.timeOfDay({kBeforeSummerTime}), (TimeOfDay{1, 59}));
  EXPECT_EQ(calendar.timeOfDay({kBeforeSummerTime + 1}), (TimeOfDay{3, 0}));
}

TEST(LocalCalendar, FollowsATraveller) {
  const LocalCalendar calendar;
  for (const auto& [zone, time] :
       {std::pair("UTC", TimeOfDay{0, 0}), std::pair("Asia/Kolkata", TimeOfDay{5, 30}),
        std::pair("America/St_Johns", TimeOfDay{20, 30})}) {
    const test::Environment here("TZ", zone);
    EXPECT_EQ(calendar.timeOfDay({0}), time) << zone;
  }
}

TEST(LocalCalendar, HasNoTimeForInstantsBeyondAllYears) {
  const LocalCalendar calendar;
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double seconds :
       {1e300, -1e300, 9e18, 5.99e17, 6e16, infinity, -infinity, std::nan("")}) {
    EXPECT_EQ(calendar.timeOfDay({seconds}), TimeOfDay{}) << seconds;
  }
  EXPECT_EQ(calendar.timeOfDay(Date::distantPast()), (TimeOfDay{0, 0}));
}

TEST(SystemClock, TellsTheTimeWithItsFraction) {
  const SystemClock clock;
  const auto system = [] {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
  };
  const double before = system();
  const Date now = clock.now();
  EXPECT_GE(now.secondsSince1970, before);
  EXPECT_LE(now.secondsSince1970, system());
  // One reading may fall on a whole second, not every one.
  bool hasFraction = false;
  for (int i = 0; i < 100 && !hasFraction; ++i) {
    hasFraction = std::fmod(clock.now().secondsSince1970, 1) != 0;
  }
  EXPECT_TRUE(hasFraction);
}

}  // namespace tollbeam
