#include "ui/chart/ChartFrame.h"

#include <gtest/gtest.h>

#include <limits>

namespace tollbeam {
namespace {

constexpr Date kNow{1000};

ChartFrame frame() { return {QRectF(10, 6, 100, 86), kNow - 100, kNow}; }

ChartPoint at(double x, std::int64_t seg = 0, std::int64_t pct = 50) {
  return {.id = 0, .date = kNow - 100 + (x - 10), .pct = pct, .seg = seg};
}

TEST(ChartFrame, PlacesTimeFromLeftToRightAndPercentFromBottomToTop) {
  EXPECT_DOUBLE_EQ(frame().x(kNow - 100), 10);
  EXPECT_DOUBLE_EQ(frame().x(kNow), 110);
  EXPECT_DOUBLE_EQ(frame().y(0), 92);
  EXPECT_DOUBLE_EQ(frame().y(50), 49);
  EXPECT_DOUBLE_EQ(frame().y(100), 6);
}

TEST(ChartFrame, StaysWithinBounds) {
  constexpr auto kHuge = std::numeric_limits<std::int64_t>::max();
  for (const double extent : {frame().y(kHuge), frame().y(-kHuge), frame().x(Date{1e300}),
                              ChartFrame{QRectF(0, 0, 9, 9), kNow, kNow}.x(kNow)}) {
    EXPECT_LT(std::abs(extent), 1000);
  }
}

TEST(ChartFrame, FindsTheNearestPointOfASegment) {
  const std::vector points{at(20), at(40), at(60)};
  EXPECT_EQ(pointAt(29, 4, points, frame()), 0U);
  EXPECT_EQ(pointAt(31, 4, points, frame()), 1U);
  EXPECT_EQ(pointAt(60, 4, points, frame()), 2U);
}

TEST(ChartFrame, FindsNothingInAGap) {
  const std::vector points{at(20), at(40), at(70, 1), at(90, 1)};
  EXPECT_EQ(pointAt(43, 4, points, frame()), 1U) << "within reach of the end";
  EXPECT_EQ(pointAt(50, 4, points, frame()), std::nullopt);
  EXPECT_EQ(pointAt(67, 4, points, frame()), 2U);
  EXPECT_EQ(pointAt(12, 4, points, frame()), std::nullopt) << "before the first";
  EXPECT_EQ(pointAt(100, 4, points, frame()), std::nullopt) << "after the last";
}

TEST(ChartFrame, FindsASinglePoint) {
  const std::vector points{at(40)};
  EXPECT_EQ(pointAt(38, 4, points, frame()), 0U);
  EXPECT_EQ(pointAt(35, 4, points, frame()), std::nullopt);
}

TEST(ChartFrame, FindsThePointsOfALineThatTurnsBack) {
  const std::vector points{at(30), at(60), at(90), at(40, 0, 80), at(64, 0, 81), at(80, 0, 82)};
  EXPECT_EQ(pointAt(42, 4, points, frame()), 3U);
  EXPECT_EQ(pointAt(65, 4, points, frame()), 4U);
  EXPECT_EQ(pointAt(79, 4, points, frame()), 5U);
  EXPECT_EQ(pointAt(61, 4, points, frame()), 1U);
  EXPECT_EQ(pointAt(50, 1, points, frame()), 3U) << "its line passes here";
  EXPECT_EQ(pointAt(95, 4, points, frame()), std::nullopt);
  const std::vector twice{at(30), at(50), at(30, 0, 70)};
  EXPECT_EQ(pointAt(30, 4, twice, frame()), 2U) << "the last recorded point";
}

TEST(ChartFrame, FindsNoPointAfterNow) {
  const std::vector points{at(100), at(120)};
  EXPECT_EQ(pointAt(108, 4, points, frame()), 0U);
  EXPECT_EQ(pointAt(120, 4, std::vector{at(120)}, frame()), std::nullopt);
  EXPECT_EQ(pointAt(40, 4, {}, frame()), std::nullopt);
}

}  // namespace
}  // namespace tollbeam
