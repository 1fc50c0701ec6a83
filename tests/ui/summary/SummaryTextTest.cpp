#include "ui/summary/SummaryText.h"

#include <gtest/gtest.h>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class SummaryTextTest : public testing::Test {
 protected:
  SummaryText of(const DaySummary& summary) const {
    return summaryText(summary, calendar, QLocale(QStringLiteral("en_GB")));
  }

  RecordedCalendar calendar;
  DaySummary monday{.day = Date{1762128000},  // 3 November 2025
                    .avgPercent = 61,
                    .minPercent = 40,
                    .maxPercent = 80,
                    .chargingMinutes = 108};
};

TEST_F(SummaryTextTest, FillsTheColumnsOfADay) {
  const SummaryText text = of(monday);
  EXPECT_EQ(text.day, QStringLiteral("Mon 3"));
  EXPECT_EQ(text.average, QStringLiteral("61%"));
  EXPECT_EQ(text.range, QString::fromUtf8("40–80%"));
  EXPECT_EQ(text.charging, QStringLiteral("1 h 48 min"));
  EXPECT_EQ(text.spoken,
            QString::fromUtf8("Mon 3: average 61%, range 40–80%, charging 1 h 48 min"));
}

TEST_F(SummaryTextTest, HasADashForNoCharging) {
  monday.chargingMinutes = 0;
  EXPECT_EQ(of(monday).charging, QString::fromUtf8("–"));
  EXPECT_TRUE(of(monday).spoken.endsWith(QStringLiteral("no charging")));
  monday.chargingMinutes = 1;
  EXPECT_EQ(of(monday).charging, QStringLiteral("1 min"));
}

TEST_F(SummaryTextTest, NamesTheDayInTheUsersTimeZone) {
  calendar.secondsEastOfUtc = -5 * 3600;
  EXPECT_EQ(of(monday).day, QStringLiteral("Sun 2"));
}

}  // namespace
}  // namespace tollbeam
