// The daily summaries on the days on which clocks change, in the zones of the real calendar.
#include "history/DaySummary.h"

#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "history/HistoryStore.h"
#include "platform/freedesktop/session/LocalCalendar.h"
#include "support/Histories.h"
#include "support/Sandbox.h"

namespace tollbeam {

namespace {

/// The parts of a summary that depend on the zone: when its day began by the local clock, and for
/// how long the battery charged.
struct Row {
  std::string began;
  std::int64_t chargingMinutes = 0;

  friend bool operator==(const Row&, const Row&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.began << " (" << row.chargingMinutes << ")";
  }
};
using Rows = std::vector<Row>;

std::string onTheClock(Date instant) {
  const auto time = static_cast<std::time_t>(instant.secondsSince1970);
  std::tm fields{};
  ::tzset();
  ::localtime_r(&time, &fields);
  std::array<char, 64> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%F %R %z", &fields)};
}

/// A battery that charges all the time: one sample a minute.
HistoryStore& chargingFrom(Date start, Date end, RecordedFileManager& files,
                           std::optional<HistoryStore>& store) {
  std::vector<Sample> samples;
  for (Date at = start; at <= end; at = at + 60) {
    samples.push_back({at.secondsSince1970, 50, true, true});
  }
  test::store(samples, files);
  return store.emplace(files, end);
}

Rows rowsOf(const HistoryStore& store, Date now) {
  Rows rows;
  for (const auto& summary : store.dailySummaries(7, now, LocalCalendar())) {
    rows.push_back({onTheClock(summary.day), summary.chargingMinutes});
  }
  return rows;
}

/// The last seven days after ten days of charging.
Rows sevenDays(const char* zone, double now) {
  const test::Environment here("TZ", zone);
  RecordedFileManager files;
  std::optional<HistoryStore> store;
  return rowsOf(chargingFrom(Date{now} - 10 * 86400.0, Date{now}, files, store), Date{now});
}

}  // namespace

TEST(DaySummaryInRealZones, ASkippedDayHasNoRowAndCountsAmongTheSeven) {
  // Noon of 31 December 2011, when Samoa had skipped the 30th to cross the date line.
  EXPECT_EQ(sevenDays("Pacific/Apia", 1325282400), (Rows{{"2011-12-31 00:00 +1400", 720},
                                                         {"2011-12-29 00:00 -1000", 1440},
                                                         {"2011-12-28 00:00 -1000", 1440},
                                                         {"2011-12-27 00:00 -1000", 1440},
                                                         {"2011-12-26 00:00 -1000", 1440},
                                                         {"2011-12-25 00:00 -1000", 1440}}));
}

TEST(DaySummaryInRealZones, ADayWithoutAMidnightDoesNotShiftTheOthers) {
  EXPECT_EQ(sevenDays("America/Sao_Paulo", 1541340000), (Rows{{"2018-11-04 01:00 -0200", 660},
                                                              {"2018-11-03 00:00 -0300", 1440},
                                                              {"2018-11-02 00:00 -0300", 1440},
                                                              {"2018-11-01 00:00 -0300", 1440},
                                                              {"2018-10-31 00:00 -0300", 1440},
                                                              {"2018-10-30 00:00 -0300", 1440},
                                                              {"2018-10-29 00:00 -0300", 1440}}));
}

TEST(DaySummaryInRealZones, SevenDaysBackMayBeginWithoutAMidnight) {
  // Noon of 10 November: the day of the jump is the first of the seven.
  const auto rows = sevenDays("America/Sao_Paulo", 1541340000 + 6 * 86400.0);
  ASSERT_EQ(rows.size(), 7U);
  EXPECT_EQ(rows.back(), (Row{"2018-11-04 01:00 -0200", 23 * 60}));
}

TEST(DaySummaryInRealZones, ARepeatedMidnightBelongsToOneDay) {
  const auto rows = sevenDays("America/Havana", 1667839800);  // 7 November 2022, 11:50
  ASSERT_EQ(rows.size(), 7U);
  EXPECT_EQ(rows[0], (Row{"2022-11-07 00:00 -0500", 710}));
  EXPECT_EQ(rows[1], (Row{"2022-11-06 00:00 -0400", 25 * 60}));
  EXPECT_EQ(rows[2], (Row{"2022-11-05 00:00 -0400", 24 * 60}));
}

TEST(DaySummaryInRealZones, ARepeatedEveningBelongsToTheEarlierDay) {
  // A minute after midnight of 29 October 2006 it was 23:01 again.
  const auto rows = sevenDays("America/St_Johns", 1162130400);
  ASSERT_EQ(rows.size(), 7U);
  EXPECT_EQ(rows[0], (Row{"2006-10-29 00:00 -0230", 631}));
  EXPECT_EQ(rows[1], (Row{"2006-10-28 00:00 -0230", 24 * 60 + 59}));
}

TEST(DaySummaryInRealZones, TheLengthOfADayFollowsChangesOfTheClock) {
  struct Case {
    const char* zone;
    double noonAfter;
    Row day;
  };
  for (const Case& c :
       {Case{"Europe/Berlin", 1711965600, {"2024-03-31 00:00 +0100", 23 * 60}},
        Case{"Europe/Berlin", 1730113200, {"2024-10-27 00:00 +0200", 25 * 60}},
        Case{"America/Sao_Paulo", 1550415600, {"2019-02-16 00:00 -0200", 25 * 60}},
        Case{"Australia/Lord_Howe", 1696208400, {"2023-10-01 00:00 +1030", 23 * 60 + 30}},
        Case{"Australia/Lord_Howe", 1712539800, {"2024-04-07 00:00 +1100", 24 * 60 + 30}},
        Case{"Asia/Kolkata", 1711953000, {"2024-03-31 00:00 +0530", 24 * 60}},
        Case{"Asia/Kathmandu", 1711952100, {"2024-03-31 00:00 +0545", 24 * 60}}}) {
    const auto rows = sevenDays(c.zone, c.noonAfter);
    ASSERT_EQ(rows.size(), 7U) << c.zone;
    EXPECT_EQ(rows[0].chargingMinutes, 12 * 60) << c.zone;
    EXPECT_EQ(rows[1], c.day) << c.zone;
  }
}

TEST(DaySummaryInRealZones, SamplesAreGroupedByTheCurrentZone) {
  RecordedFileManager files;
  std::optional<HistoryStore> store;
  const Date start{1717977600};  // 10 June 2024, midnight in Greenwich
  const Date end = start + 23 * 3600.0 + 59 * 60.0;
  chargingFrom(start, end, files, store);
  for (const auto& [zone, rows] :
       {std::pair("UTC", Rows{{"2024-06-10 00:00 +0000", 1439}}),
        std::pair("Asia/Kolkata",
                  Rows{{"2024-06-11 00:00 +0530", 329}, {"2024-06-10 00:00 +0530", 1110}}),
        std::pair("America/St_Johns",
                  Rows{{"2024-06-10 00:00 -0230", 1289}, {"2024-06-09 00:00 -0230", 150}}),
        std::pair("UTC", Rows{{"2024-06-10 00:00 +0000", 1439}})}) {
    const test::Environment here("TZ", zone);
    EXPECT_EQ(rowsOf(*store, end), rows) << zone;
  }
}

}  // namespace tollbeam
