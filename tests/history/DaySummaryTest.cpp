#include "history/DaySummary.h"

#include <gtest/gtest.h>

#include <limits>

#include "history/HistoryStore.h"
#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

using Samples = std::vector<Sample>;

constexpr double kDay = 86400;
constexpr double kMidnight = 20000 * kDay;

/// Knows no day before its first one.
class YoungCalendar final : public Calendar {
 public:
  explicit YoungCalendar(CalendarDay first) : first_(first) {}
  [[nodiscard]] TimeOfDay timeOfDay(Date instant) const override {
    return whole_.timeOfDay(instant);
  }
  [[nodiscard]] CalendarDay day(Date instant) const override { return whole_.day(instant); }
  [[nodiscard]] std::optional<Date> startOfDay(CalendarDay day) const override {
    return day < first_ ? std::nullopt : whole_.startOfDay(day);
  }
  [[nodiscard]] std::optional<Date> instant(CalendarDay day, TimeOfDay time) const override {
    return day < first_ ? std::nullopt : whole_.instant(day, time);
  }

 private:
  RecordedCalendar whole_;
  CalendarDay first_;
};

class DaySummaryTest : public testing::Test {
 protected:
  DaySummary only(const Samples& samples) {
    const auto summaries = daySummaries(samples, calendar);
    EXPECT_EQ(summaries.size(), 1U);
    return summaries.empty() ? DaySummary{} : summaries.front();
  }

  RecordedCalendar calendar;
};

TEST_F(DaySummaryTest, AnEmptyHistoryHasNoDays) {
  EXPECT_TRUE(daySummaries(Samples{}, calendar).empty());
}

TEST_F(DaySummaryTest, ALoneSampleIsItsOwnAverage) {
  EXPECT_EQ(only({{kMidnight + 5, 40, true, true}}), (DaySummary{Date{kMidnight}, 40, 40, 40, 0}));
}

TEST_F(DaySummaryTest, LoneSamplesHaveTheHighestAsTheirAverage) {
  EXPECT_EQ(only({{kMidnight, 40, false, false}, {kMidnight + 5000, 70, false, false}}),
            (DaySummary{Date{kMidnight}, 70, 40, 70, 0}));
}

TEST_F(DaySummaryTest, WeighsByTimeUntilTheNextSample) {
  EXPECT_EQ(only({{kMidnight, 50, true, true}, {kMidnight + 600, 60, false, true}}),
            (DaySummary{Date{kMidnight}, 50, 50, 60, 10}));
  EXPECT_EQ(only({{kMidnight, 20, false, false},
                  {kMidnight + 300, 80, false, false},
                  {kMidnight + 1200, 10, false, false}})
                .avgPercent,
            65);
}

TEST_F(DaySummaryTest, CountsIntervalsOfUpTo900Seconds) {
  EXPECT_EQ(only({{kMidnight, 50, true, true}, {kMidnight + 900, 60, true, true}}).chargingMinutes,
            15);
  const DaySummary gap = only({{kMidnight, 50, true, true}, {kMidnight + 901, 60, true, true}});
  EXPECT_EQ(gap.chargingMinutes, 0);
  EXPECT_EQ(gap.avgPercent, 60);
}

TEST_F(DaySummaryTest, IntervalsOfNoLengthCountForNothing) {
  EXPECT_EQ(only({{kMidnight, 50, true, true}, {kMidnight, 70, true, true}}).avgPercent, 70);
}

TEST_F(DaySummaryTest, IntervalsBackInTimeCountForNothing) {
  // The clock was set back by five minutes.
  EXPECT_EQ(only({{kMidnight + 600, 40, true, true},
                  {kMidnight + 300, 60, true, true},
                  {kMidnight + 420, 70, false, true}}),
            (DaySummary{Date{kMidnight}, 60, 40, 70, 2}));
}

TEST_F(DaySummaryTest, TruncatesChargingMinutes) {
  for (const auto& [seconds, minutes] : {std::pair{119.0, 1}, {120.0, 2}, {59.0, 0}, {60.0, 1}}) {
    EXPECT_EQ(
        only({{kMidnight, 50, true, true}, {kMidnight + seconds, 50, false, true}}).chargingMinutes,
        minutes);
  }
}

TEST_F(DaySummaryTest, RoundsTheAverageHalfAwayFromZero) {
  EXPECT_EQ(only({{kMidnight, 55, false, false},
                  {kMidnight + 60, 60, false, false},
                  {kMidnight + 120, 0, false, false}})
                .avgPercent,
            58);
}

TEST_F(DaySummaryTest, PercentsOutOfRangeMoveOnlyOneBound) {
  EXPECT_EQ(only({{kMidnight, 104, false, false}}),
            (DaySummary{Date{kMidnight}, 104, 100, 104, 0}));
  EXPECT_EQ(only({{kMidnight, -3, false, false}}), (DaySummary{Date{kMidnight}, 0, -3, 0, 0}));
}

TEST_F(DaySummaryTest, AnIntervalBelongsToTheDayInWhichItBegins) {
  const double night = kMidnight + kDay;
  EXPECT_EQ(
      daySummaries(Samples{{night - 300, 50, true, true}, {night + 300, 60, true, true}}, calendar),
      (std::vector<DaySummary>{{Date{night}, 60, 60, 60, 0}, {Date{kMidnight}, 50, 50, 50, 10}}));
}

TEST_F(DaySummaryTest, DaysAreLocal) {
  calendar.secondsEastOfUtc = -5 * 3600;
  EXPECT_EQ(only({{kMidnight + 3600, 50, false, false}}).day, Date{kMidnight - 19 * 3600});
}

TEST_F(DaySummaryTest, SevenDaysAreTodayAndTheSixBefore) {
  RecordedFileManager files;
  const Date now{kMidnight + 9.5 * 3600};
  HistoryStore store(files, now - 10 * kDay);
  BatteryState state;
  state.hasBattery = true;
  for (int day = 9; day >= 0; --day) {
    state.percent = 50 + day;
    store.record(state, Date{kMidnight - day * kDay}, true);
  }
  state.percent = 1;
  store.record(state, Date{kMidnight - 6 * kDay - 1 + 7 * kDay}, true);
  const auto summaries = store.dailySummaries(7, now, calendar);
  ASSERT_EQ(summaries.size(), 7U);
  for (int day = 0; day < 7; ++day) {
    EXPECT_EQ(summaries[static_cast<std::size_t>(day)].day, Date{kMidnight - day * kDay});
  }
  EXPECT_EQ(store.dailySummaries(1, now, calendar).size(), 1U);
}

TEST_F(DaySummaryTest, TimesBeyondTheCalendarCountForItsFallbackDay) {
  constexpr auto kHuge = std::numeric_limits<std::int64_t>::max();
  const std::vector<Sample> samples{{-1e300, 50, true, true}, {1e300, kHuge, true, true}};
  EXPECT_EQ(daySummaries(samples, calendar),
            (std::vector<DaySummary>{{Date{0}, kHuge, 50, kHuge, 0}}));
}

TEST_F(DaySummaryTest, WithoutAFirstDayOnlySamplesFromNowOnCount) {
  RecordedFileManager files;
  const Date now{kMidnight + 9.5 * 3600};
  HistoryStore store(files, now - 3600);
  BatteryState state;
  state.hasBattery = true;
  state.percent = 40;
  store.record(state, now - 60, true);
  state.percent = 41;
  store.record(state, now, true);
  const YoungCalendar young(calendar.day(now));
  EXPECT_EQ(firstSummarisedInstant(7, now, young), now);
  EXPECT_EQ(firstSummarisedInstant(1, now, young), Date{kMidnight});
  EXPECT_EQ(store.dailySummaries(7, now, young),
            (std::vector<DaySummary>{{Date{kMidnight}, 41, 41, 41, 0}}));
  EXPECT_EQ(store.dailySummaries(1, now, young),
            (std::vector<DaySummary>{{Date{kMidnight}, 40, 40, 41, 0}}));
}

}  // namespace
}  // namespace tollbeam
