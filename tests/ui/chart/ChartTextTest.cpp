#include "ui/chart/ChartText.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

constexpr Date kNow{1'000'000};

std::string spoken(const std::vector<Sample>& samples, int days = 1) {
  return spokenChart(samples, days, kNow).toStdString();
}

Sample sample(double secondsAgo, std::int64_t percent) {
  return {.t = kNow.secondsSince1970 - secondsAgo, .p = percent};
}

TEST(ChartText, SaysTheRangeAndTheCurrentCharge) {
  EXPECT_EQ(spoken({sample(7200, 60), sample(3600, 48), sample(1800, 80), sample(0, 64)}),
            "Last 24 hours: 48% to 80%, now 64%.");
  EXPECT_EQ(spoken({sample(7200, 60), sample(0, 64)}, 7), "Last 7 days: 60% to 64%, now 64%.");
}

TEST(ChartText, SaysNoCurrentChargeAfter15MinutesWithoutASample) {
  EXPECT_EQ(spoken({sample(7200, 60), sample(901, 64)}), "Last 24 hours: 60% to 64%.");
}

TEST(ChartText, IgnoresSamplesAfterNow) {
  EXPECT_EQ(spoken({sample(600, 60), sample(-600, 90)}), "Last 24 hours: 60% to 60%, now 60%.");
  EXPECT_EQ(spoken({sample(-600, 90)}), "");
  EXPECT_EQ(spoken({}), "");
}

TEST(ChartText, SaysTheLastRecordedChargeAfterTheClockWasSetBack) {
  // The clock was set back by two hours, half an hour ago.
  const std::vector<Sample> history{sample(3600, 40), sample(0, 40),   sample(-3600, 30),
                                    sample(1800, 85), sample(900, 95), sample(0, 90)};
  EXPECT_EQ(spoken(history), "Last 24 hours: 40% to 95%, now 90%.");
  EXPECT_EQ(spoken({sample(0, 40), sample(-3600, 30), sample(1800, 85)}),
            "Last 24 hours: 40% to 85%.")
      << "the newest sample is too old";
}

}  // namespace
}  // namespace tollbeam
