#include "ui/chart/ChartTicks.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/freedesktop/session/LocalCalendar.h"
#include "support/Sandbox.h"

namespace tollbeam {

static void PrintTo(const TimeOfDay& time, std::ostream* out) {
  *out << time.hour << ':' << time.minute;
}

namespace {

constexpr double kDay = 86400;
constexpr double kHour = 3600;

class ChartTicksTest : public testing::Test {
 protected:
  std::vector<int> hours(Date now) const {
    std::vector<int> result;
    for (const HourTick& tick : hourTicks(now - kDay, now, calendar)) result.push_back(tick.hour);
    return result;
  }
  std::vector<double> lengths(Date now) const {
    std::vector<double> result;
    for (const DaySpan& span : daySpans(now - 7 * kDay, now, calendar)) {
      result.push_back((span.end - span.start) / kHour);
    }
    return result;
  }

  LocalCalendar calendar;
};

TEST_F(ChartTicksTest, MarksEveryQuarterOfADay) {
  const test::Environment zone("TZ", "UTC");
  const Date now{1763648400};  // 14:20
  EXPECT_EQ(hours(now), (std::vector{18, 0, 6, 12}));
  const auto ticks = hourTicks(now - kDay, now, calendar);
  EXPECT_EQ(ticks.front().at, Date{1763648400 - 20 * kHour - 20 * 60});
  EXPECT_EQ(ticks.back().shown, (TimeOfDay{12, 0}));
}

TEST_F(ChartTicksTest, MarksBothEndsOfTheRange) {
  const test::Environment zone("TZ", "UTC");
  EXPECT_EQ(hours(Date{1763640000}), (std::vector{12, 18, 0, 6, 12}));  // noon to noon
}

TEST_F(ChartTicksTest, FollowsTheClockOfAHalfHourZone) {
  const test::Environment zone("TZ", "Asia/Kolkata");
  const Date now{1763628600};  // 14:20
  const auto ticks = hourTicks(now - kDay, now, calendar);
  ASSERT_EQ(ticks.size(), 4U);
  EXPECT_EQ(ticks[1].at, Date{1763577000});  // midnight there
  for (const HourTick& tick : ticks) EXPECT_EQ(tick.shown, (TimeOfDay{tick.hour, 0}));
}

TEST_F(ChartTicksTest, FollowsTheClockThroughTheNightsOfDaylightSaving) {
  const test::Environment zone("TZ", "Europe/Berlin");
  const auto spring = hourTicks(Date{1711887600} - kDay, Date{1711887600}, calendar);
  ASSERT_EQ(spring.size(), 4U);
  EXPECT_EQ(spring[1].at, Date{1711839600});
  EXPECT_EQ(spring[2].at - spring[1].at, 5 * kHour);
  EXPECT_EQ(spring[2].shown, (TimeOfDay{6, 0}));
  const auto autumn = hourTicks(Date{1730035200} - kDay, Date{1730035200}, calendar);
  ASSERT_EQ(autumn.size(), 4U);
  EXPECT_EQ(autumn[1].at, Date{1729980000});
  EXPECT_EQ(autumn[2].at - autumn[1].at, 7 * kHour);
}

TEST_F(ChartTicksTest, GivesTheShownTimeWhereTheClockSkipsMidnight) {
  const test::Environment zone("TZ", "Africa/Cairo");
  const Date now{1714130400};  // 26 April 2024, which begins at one o'clock
  const auto ticks = hourTicks(now - kDay, now, calendar);
  ASSERT_EQ(ticks.size(), 4U);
  EXPECT_EQ(ticks[1], (HourTick{.hour = 0, .at = Date{1714082400}, .shown = {1, 0}}));
  EXPECT_EQ(ticks[2].at - ticks[1].at, 5 * kHour);
}

TEST_F(ChartTicksTest, TakesTheFirstOfTwoMidnights) {
  const test::Environment zone("TZ", "America/Havana");
  const Date now{1730661600};  // 3 November 2024
  EXPECT_EQ(hours(now), (std::vector{18, 0, 6, 12}));
  EXPECT_EQ(hourTicks(now - kDay, now, calendar)[1].at, Date{1730606400});
}

TEST_F(ChartTicksTest, FollowsAChangeOfTheTimeZone) {
  std::vector<HourTick> there;
  std::vector<HourTick> here;
  const Date now{1763648400};
  {
    const test::Environment zone("TZ", "UTC");
    here = hourTicks(now - kDay, now, calendar);
  }
  {
    const test::Environment zone("TZ", "Asia/Kathmandu");
    there = hourTicks(now - kDay, now, calendar);
  }
  EXPECT_NE(here, there);
}

TEST_F(ChartTicksTest, GivesEveryDayItsOwnLength) {
  const test::Environment zone("TZ", "Europe/Berlin");
  EXPECT_EQ(lengths(Date{1712060400}),  // 2 April 2024, two days after the short one
            (std::vector<double>{24, 24, 24, 24, 24, 23, 24, 24}));
}

TEST_F(ChartTicksTest, LeavesOutASkippedDay) {
  const test::Environment zone("TZ", "Pacific/Apia");
  const Date now{1325455200};  // 2 January 2012; 30 December was skipped
  std::vector<int> days;
  for (const DaySpan& span : daySpans(now - 5 * kDay, now, calendar)) days.push_back(span.day.day);
  EXPECT_EQ(days, (std::vector{27, 28, 29, 31, 1, 2}));
}

TEST_F(ChartTicksTest, HasNoneForVeryLongOrEmptyRanges) {
  const test::Environment zone("TZ", "UTC");
  const Date now{1763648400};
  for (const double days :
       {-1.0, 0.0, 70.0, 2147483647.0, -2147483648.0, std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(hourTicks(now - days * kDay, now, calendar).empty()) << days;
    EXPECT_TRUE(daySpans(now - days * kDay, now, calendar).empty()) << days;
  }
}

}  // namespace
}  // namespace tollbeam
