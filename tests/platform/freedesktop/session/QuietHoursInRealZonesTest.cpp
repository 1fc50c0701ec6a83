// Quiet hours on the days on which clocks change, in the zones of the real calendar.
#include "preferences/MinutesBinding.h"

#include <gtest/gtest.h>

#include "platform/freedesktop/session/LocalCalendar.h"
#include "recorded/RecordedPlatform.h"
#include "support/Sandbox.h"

namespace tollbeam {

namespace {

struct Case {
  const char* zone;
  CalendarDay today;
  std::int64_t minutes;
  TimeOfDay shown;
};

constexpr std::int64_t at(int hour, int minute) { return hour * 60 + minute; }

}  // namespace

TEST(MinutesBindingInRealZones, ShowsTheNextTimeWhereTheClockJumps) {
  const Case cases[] = {
      {"Europe/Berlin", {2024, 3, 31}, at(1, 59), {1, 59}},
      {"Europe/Berlin", {2024, 3, 31}, at(2, 0), {3, 0}},
      {"Europe/Berlin", {2024, 3, 31}, at(2, 30), {3, 0}},
      {"Europe/Berlin", {2024, 3, 31}, at(3, 0), {3, 0}},
      {"Europe/Berlin", {2024, 3, 31}, at(22, 0), {22, 0}},
      {"Europe/Berlin", {2024, 3, 30}, at(2, 30), {2, 30}},
      {"Europe/Berlin", {2024, 10, 27}, at(2, 30), {2, 30}},
      {"America/New_York", {2024, 3, 10}, at(2, 1), {3, 0}},
      {"America/Sao_Paulo", {2018, 11, 4}, at(0, 0), {1, 0}},
      {"America/Sao_Paulo", {2018, 11, 4}, at(0, 59), {1, 0}},
      {"Australia/Lord_Howe", {2023, 10, 1}, at(2, 15), {2, 30}},
      {"Australia/Lord_Howe", {2023, 10, 1}, at(2, 29), {2, 30}},
      {"America/St_Johns", {2006, 4, 2}, at(0, 30), {1, 1}},
      {"Asia/Kolkata", {2024, 3, 31}, at(2, 30), {2, 30}},
      {"Asia/Kathmandu", {1986, 1, 1}, at(0, 10), {0, 15}},
  };
  for (const Case& c : cases) {
    const test::Environment here("TZ", c.zone);
    const LocalCalendar calendar;
    const Date now = *calendar.startOfDay(c.today) + 12 * 3600.0;
    EXPECT_EQ(calendar.timeOfDay(timeOfMinutes(c.minutes, now, calendar)), c.shown)
        << c.zone << ' ' << c.minutes;
  }
}

TEST(MinutesBindingInRealZones, StoresWhatTheClockShowsInPlaceOfWhatItJumpsOver) {
  struct Choice {
    const char* zone;
    CalendarDay today;
    TimeOfDay chosen;
    std::int64_t stored;
  };
  const Choice choices[] = {
      {"Europe/Berlin", {2024, 3, 31}, {1, 59}, at(1, 59)},
      {"Europe/Berlin", {2024, 3, 31}, {2, 0}, at(3, 0)},
      {"Europe/Berlin", {2024, 3, 31}, {2, 30}, at(3, 0)},
      {"Europe/Berlin", {2024, 3, 31}, {22, 0}, at(22, 0)},
      {"Europe/Berlin", {2024, 4, 1}, {2, 30}, at(2, 30)},
      {"Europe/Berlin", {2024, 10, 27}, {2, 30}, at(2, 30)},
      {"America/Sao_Paulo", {2018, 11, 4}, {0, 30}, at(1, 0)},
      {"Australia/Lord_Howe", {2023, 10, 1}, {2, 15}, at(2, 30)},
  };
  for (const Choice& c : choices) {
    const test::Environment here("TZ", c.zone);
    const LocalCalendar calendar;
    const ManualClock clock{*calendar.startOfDay(c.today) + 12 * 3600.0};
    RecordedUserDefaults store;
    MinutesBinding(store, "quietStart", calendar, clock).setTime(c.chosen);
    EXPECT_EQ(store.integerForKey("quietStart"), c.stored) << c.zone << ' ' << c.stored;
  }
}

TEST(MinutesBindingInRealZones, ShowsTheFirstOfARepeatedTime) {
  const test::Environment here("TZ", "Europe/Berlin");
  const LocalCalendar calendar;
  const Date evening{1730059200};  // 27 October 2024, 21:00
  const Date first = timeOfMinutes(at(2, 30), evening, calendar);
  EXPECT_EQ(calendar.timeOfDay(first + 3600.0), (TimeOfDay{2, 30})) << "and here again";
  EXPECT_EQ(first, Date{1729989000});
}

TEST(MinutesBindingInRealZones, ShowsEveryMinuteOfAnOrdinaryDayUnchanged) {
  for (const char* zone : {"UTC", "Europe/Berlin", "America/St_Johns", "Pacific/Apia"}) {
    const test::Environment here("TZ", zone);
    const LocalCalendar calendar;
    const Date now{1'763'648'400};
    for (std::int64_t minutes = 0; minutes < 24 * 60; ++minutes) {
      const TimeOfDay shown = calendar.timeOfDay(timeOfMinutes(minutes, now, calendar));
      ASSERT_EQ(at(shown.hour, shown.minute), minutes) << zone;
    }
  }
}

}  // namespace tollbeam
