#include "battery/FormatMinutes.h"

#include <gtest/gtest.h>

#include <limits>

namespace tollbeam {
namespace {

TEST(FormatMinutes, WritesHoursAndMinutes) {
  EXPECT_EQ(formatMinutes(59), "59 min");
  EXPECT_EQ(formatMinutes(60), "1 h");
  EXPECT_EQ(formatMinutes(61), "1 h 1 min");
  EXPECT_EQ(formatMinutes(65), "1 h 5 min");
  EXPECT_EQ(formatMinutes(120), "2 h");
}

TEST(FormatMinutes, NeverSaysLessThanOneMinute) {
  EXPECT_EQ(formatMinutes(1), "1 min");
  EXPECT_EQ(formatMinutes(0), "1 min");
  EXPECT_EQ(formatMinutes(-5), "1 min");
  EXPECT_EQ(formatMinutes(std::numeric_limits<std::int64_t>::min()), "1 min");
}

TEST(FormatMinutes, WritesLargeNumbersWithoutGrouping) {
  EXPECT_EQ(formatMinutes(60LL * 12345), "12345 h");
}

}  // namespace
}  // namespace tollbeam
