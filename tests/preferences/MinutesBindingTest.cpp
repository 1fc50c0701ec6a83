#include "preferences/MinutesBinding.h"

#include <gtest/gtest.h>

#include <limits>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class MinutesBindingTest : public testing::Test {
 protected:
  MinutesBindingTest() { clock.set({14 * 3600 + 20 * 60 + 30}); }

  TimeOfDay shown(std::int64_t minutes) {
    store.set("quietStart", minutes);
    return binding.time();
  }

  RecordedUserDefaults store;
  RecordedCalendar calendar;
  ManualClock clock{{0}};
  MinutesBinding binding{store, "quietStart", calendar, clock};
};

TEST_F(MinutesBindingTest, ShowsMinutesAsATimeOfDay) {
  EXPECT_EQ(shown(1320), (TimeOfDay{22, 0}));
  EXPECT_EQ(shown(0), (TimeOfDay{0, 0}));
  EXPECT_EQ(shown(59), (TimeOfDay{0, 59}));
  EXPECT_EQ(shown(1439), (TimeOfDay{23, 59}));
}

TEST_F(MinutesBindingTest, StoresTheHourAndTheMinuteOfAChoice) {
  binding.setTime({7, 30});
  EXPECT_EQ(store.integerForKey("quietStart"), 450);
  binding.setTime({0, 0});
  EXPECT_EQ(store.integerForKey("quietStart"), 0);
  binding.setTime({23, 59});
  EXPECT_EQ(store.integerForKey("quietStart"), 1439);
}

TEST_F(MinutesBindingTest, ShowsTheCurrentTimeForAnInvalidTimeOfDay) {
  for (const std::int64_t minutes :
       {std::int64_t{1440}, std::int64_t{-1}, std::int64_t{-59}, std::int64_t{-60},
        std::int64_t{-1439}, std::int64_t{60} * 4294967296, std::int64_t{-60} * 4294967296,
        std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}) {
    EXPECT_EQ(shown(minutes), (TimeOfDay{14, 20})) << minutes;
    EXPECT_EQ(timeOfMinutes(minutes, clock.now(), calendar), clock.now()) << minutes;
  }
}

TEST_F(MinutesBindingTest, ShowsATimeOfTodayAtItsFirstSecond) {
  EXPECT_EQ(timeOfMinutes(450, clock.now(), calendar), Date{450 * 60});
  calendar.secondsEastOfUtc = -5 * 3600;
  EXPECT_EQ(timeOfMinutes(450, clock.now(), calendar), Date{(450 + 300) * 60});
}

TEST_F(MinutesBindingTest, ShowingWritesNothing) {
  store.values.emplace("quietStart", 5000);
  EXPECT_EQ(binding.time(), (TimeOfDay{14, 20}));
  EXPECT_EQ(store.writes, 0);
}

// A calendar that cannot place today.
class NoCalendar final : public Calendar {
 public:
  [[nodiscard]] TimeOfDay timeOfDay(Date /*instant*/) const override { return {}; }
  [[nodiscard]] CalendarDay day(Date /*instant*/) const override { return {}; }
  [[nodiscard]] std::optional<Date> startOfDay(CalendarDay /*day*/) const override {
    return std::nullopt;
  }
  [[nodiscard]] std::optional<Date> instant(CalendarDay /*day*/,
                                            TimeOfDay /*time*/) const override {
    return std::nullopt;
  }
};

TEST_F(MinutesBindingTest, StoresTheChoiceOnADayBeyondTheCalendar) {
  const NoCalendar none;
  MinutesBinding lost{store, "quietStart", none, clock};
  lost.setTime({7, 30});
  EXPECT_EQ(store.integerForKey("quietStart"), 450);
}

TEST_F(MinutesBindingTest, ShowsTheStoredChoice) {
  for (std::int64_t minutes = 0; minutes < 24 * 60; ++minutes) {
    const TimeOfDay time = shown(minutes);
    binding.setTime(time);
    EXPECT_EQ(store.integerForKey("quietStart"), minutes);
  }
}

}  // namespace
}  // namespace tollbeam
