#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "platform/freedesktop/session/LocalCalendar.h"
#include "platform/freedesktop/session/SystemClock.h"
#include "support/Sandbox.h"

namespace tollbeam {

namespace {

// 2024-03-31 00:59:59 UTC: a second later Berlin skips from two to three o'clock.
constexpr double kBeforeSummerTime = 1711846799;

}  // namespace

TEST(LocalCalendar, GivesTheLocalTime) {
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

TEST(LocalCalendar, FollowsAChangeOfTheZone) {
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

TEST(LocalCalendar, StartsDaysAtTheirMidnights) {
  const test::Environment zone("TZ", "Europe/Berlin");
  const LocalCalendar calendar;
  EXPECT_EQ(calendar.day({kBeforeSummerTime}), (CalendarDay{2024, 3, 31}));
  const auto today = calendar.startOfDay({2024, 3, 31}).value();
  EXPECT_EQ(today, Date{1711839600});
  EXPECT_EQ(calendar.startOfDay({2024, 4, 1}).value() - today, 23 * 3600);
  EXPECT_EQ(
      calendar.startOfDay({2024, 10, 28}).value() - calendar.startOfDay({2024, 10, 27}).value(),
      25 * 3600);
}

TEST(LocalCalendar, ADayWithoutAMidnightStartsAfterTheJump) {
  const test::Environment zone("TZ", "America/Sao_Paulo");
  const LocalCalendar calendar;
  const auto start = calendar.startOfDay({2018, 11, 4}).value();
  EXPECT_EQ(calendar.timeOfDay(start), (TimeOfDay{1, 0}));
  EXPECT_EQ(calendar.day(start), (CalendarDay{2018, 11, 4}));
  EXPECT_EQ(calendar.day(start - 1.0), (CalendarDay{2018, 11, 3}));
}

TEST(LocalCalendar, ASkippedDateStartsAfterTheJump) {
  const test::Environment zone("TZ", "Pacific/Apia");
  const LocalCalendar calendar;
  const CalendarDay lastDay{2011, 12, 31};
  EXPECT_EQ(lastDay.plusDays(-6), (CalendarDay{2011, 12, 25}));
  EXPECT_EQ(calendar.startOfDay({2011, 12, 30}), calendar.startOfDay(lastDay));
  EXPECT_EQ(calendar.startOfDay(lastDay).value() - calendar.startOfDay({2011, 12, 25}).value(),
            5 * 86400);
}

TEST(LocalCalendar, FindsATimeOfADay) {
  const test::Environment zone("TZ", "Europe/Berlin");
  const LocalCalendar calendar;
  EXPECT_EQ(calendar.instant({2024, 3, 31}, {0, 0}), calendar.startOfDay({2024, 3, 31}));
  EXPECT_EQ(calendar.instant({2024, 3, 31}, {1, 59}), Date{kBeforeSummerTime - 59});
  EXPECT_EQ(calendar.instant({2024, 3, 31}, {2, 0}), Date{kBeforeSummerTime + 1}) << "jumped over";
  EXPECT_EQ(calendar.instant({2024, 3, 31}, {2, 59}), Date{kBeforeSummerTime + 1});
  EXPECT_EQ(calendar.instant({2024, 3, 31}, {3, 0}), Date{kBeforeSummerTime + 1});
  EXPECT_EQ(calendar.instant({2024, 10, 27}, {2, 30}), Date{1729989000}) << "the first of two";
}

TEST(LocalCalendar, HasNoInstantForATimeBeyondTheClock) {
  const LocalCalendar calendar;
  for (const TimeOfDay time :
       {TimeOfDay{24, 0}, TimeOfDay{-1, 0}, TimeOfDay{0, 60}, TimeOfDay{0, -1}}) {
    EXPECT_EQ(calendar.instant({2024, 3, 31}, time), std::nullopt);
  }
}

namespace {

struct Night {
  const char* zone;
  double around;
};

// Nights with unusual changes of the clock.
constexpr Night kNights[] = {
    {"UTC", 1e9},
    {"Europe/Berlin", 1711846800},
    {"Europe/Berlin", 1729990800},
    {"Pacific/Apia", 1325239200},
    {"America/Sao_Paulo", 1541300400},
    {"America/Sao_Paulo", 1550368800},
    {"America/St_Johns", 1162089060},
    {"Australia/Lord_Howe", 1696087800},
    {"Australia/Lord_Howe", 1712415600},
    {"Asia/Beirut", 1648332000},
    {"America/Havana", 1667710800},
    {"Asia/Kathmandu", 504901800},
    {"Pacific/Kwajalein", 745934400},
    {"Europe/Moscow", 1414274400},  // back by an hour, and it was no summer time
    {"America/Caracas", 1462086000},
    {"Asia/Pyongyang", 1525446000},
};

}  // namespace

// Against a walk through every second around those nights.
TEST(LocalCalendar, StartsEveryDayAtItsFirstSecond) {
  for (const Night& night : kNights) {
    const test::Environment here("TZ", night.zone);
    const LocalCalendar calendar;
    CalendarDay before = calendar.day({night.around - 3 * 86400});
    for (double t = night.around - 3 * 86400; t < night.around + 3 * 86400; ++t) {
      const CalendarDay day = calendar.day({t});
      if (day <= before) continue;  // a date that comes back began earlier
      before = day;
      ASSERT_EQ(calendar.startOfDay(day), Date{t})
          << night.zone << ' ' << day.year << '-' << day.month << '-' << day.day;
    }
  }
}

// Clocks change on whole minutes since 1970, so a walk through these finds every change.
TEST(LocalCalendar, FindsTheFirstInstantOfEveryMinute) {
  for (const Night& night : kNights) {
    const test::Environment here("TZ", night.zone);
    const LocalCalendar calendar;
    const double start = std::floor(night.around / 60) * 60 - 2 * 86400;
    std::map<std::pair<CalendarDay, TimeOfDay>, Date> firstShown;
    for (double t = start; t < start + 4 * 86400; t += 60) {
      firstShown.emplace(std::pair(calendar.day({t}), calendar.timeOfDay({t})), Date{t});
    }
    for (CalendarDay day = calendar.day({start + 86400}); day < calendar.day({start + 3 * 86400});
         day = day.plusDays(1)) {
      for (int minute = 0; minute < 24 * 60; ++minute) {
        const TimeOfDay time{minute / 60, minute % 60};
        // The clock jumps over a time that it does not show; the next one shown comes after the
        // jump.
        const auto expected = firstShown.lower_bound({day, time});
        ASSERT_NE(expected, firstShown.end());
        ASSERT_EQ(calendar.instant(day, time), expected->second)
            << night.zone << ' ' << day.month << '-' << day.day << ' ' << time.hour << ':'
            << time.minute;
      }
    }
  }
}

TEST(SystemClock, GivesTheTimeWithItsFraction) {
  const SystemClock clock;
  const auto system = [] {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
  };
  const double before = system();
  const Date now = clock.now();
  EXPECT_GE(now.secondsSince1970, before);
  EXPECT_LE(now.secondsSince1970, system());
  // A single reading may fall on a whole second.
  bool hasFraction = false;
  for (int i = 0; i < 100 && !hasFraction; ++i) {
    hasFraction = std::fmod(clock.now().secondsSince1970, 1) != 0;
  }
  EXPECT_TRUE(hasFraction);
}

}  // namespace tollbeam
