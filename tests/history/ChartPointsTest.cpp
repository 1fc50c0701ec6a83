#include "history/ChartPoints.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

std::vector<Sample> everyMinute(std::size_t count) {
  std::vector<Sample> samples;
  for (std::size_t i = 0; i < count; ++i) {
    samples.push_back(
        {static_cast<double>(i) * 60, static_cast<std::int64_t>(i % 101), false, true});
  }
  return samples;
}

std::vector<ChartPoint> pair(double gap) {
  return chartPoints(std::vector<Sample>{{0, 50, false, false}, {gap, 40, false, false}});
}

TEST(ChartPoints, NoSamplesMakeNoPoints) { EXPECT_TRUE(chartPoints({}).empty()); }

TEST(ChartPoints, KeepIndexTimeAndPercent) {
  EXPECT_EQ(pair(60), (std::vector<ChartPoint>{{0, Date{0}, 50, 0}, {1, Date{60}, 40, 0}}));
}

TEST(ChartPoints, FewerThan600SamplesAreKeptWhole) {
  for (const std::size_t count : {1U, 2U, 299U, 300U, 301U, 599U}) {
    EXPECT_EQ(chartPoints(everyMinute(count)).size(), count);
  }
}

TEST(ChartPoints, From600SamplesOnTheyAreThinnedAndTheNewestIsKept) {
  const auto points = chartPoints(everyMinute(600));
  ASSERT_EQ(points.size(), 301U);
  EXPECT_EQ(points[1].id, 2);
  EXPECT_EQ(points.back().id, 599);
  EXPECT_EQ(chartPoints(everyMinute(601)).size(), 301U) << "the newest is on the grid itself";
}

TEST(ChartPoints, AreAlwaysAFewHundredInOrder) {
  for (std::size_t count = 600; count < 45000; count = count * 5 / 4 + 1) {
    const auto points = chartPoints(everyMinute(count));
    EXPECT_GE(points.size(), 300U) << count;
    EXPECT_LE(points.size(), 601U) << count;
    EXPECT_EQ(points.front().id, 0);
    EXPECT_EQ(points.back().id, static_cast<std::int64_t>(count) - 1);
    EXPECT_EQ(points.back().seg, 0) << "thinning alone breaks no line";
  }
}

TEST(ChartPoints, ALongSilenceBreaksTheLine) {
  EXPECT_EQ(pair(960).back().seg, 0);
  EXPECT_EQ(pair(961).back().seg, 1);
  EXPECT_EQ(pair(960.001).back().seg, 1);
}

TEST(ChartPoints, AStepBackInTimeDoesNotBreakTheLine) {
  const auto points = chartPoints(std::vector<Sample>{{7200, 80, false, false},
                                                      {0, 79, false, false},
                                                      {60, 78, false, false},
                                                      {1021, 77, false, false}});
  EXPECT_EQ(points, (std::vector<ChartPoint>{{0, Date{7200}, 80, 0},
                                             {1, Date{0}, 79, 0},
                                             {2, Date{60}, 78, 0},
                                             {3, Date{1021}, 77, 1}}));
}

TEST(ChartPoints, WiderThinningToleratesALongerSilence) {
  auto samples = everyMinute(600);
  for (std::size_t i = 300; i < samples.size(); ++i) samples[i].t += 900;
  EXPECT_EQ(chartPoints(samples).back().seg, 0) << "120 + 900 seconds at stride 2";
  for (std::size_t i = 300; i < samples.size(); ++i) samples[i].t += 0.5;
  EXPECT_EQ(chartPoints(samples).back().seg, 1);
}

TEST(ChartPoints, SegmentsOnlyGrow) {
  const auto points = chartPoints(std::vector<Sample>{{0, 1, false, false},
                                                      {2000, 1, false, false},
                                                      {2060, 1, false, false},
                                                      {9000, 1, false, false}});
  std::vector<std::int64_t> segments;
  for (const auto& point : points) segments.push_back(point.seg);
  EXPECT_EQ(segments, (std::vector<std::int64_t>{0, 1, 1, 2}));
}

}  // namespace
}  // namespace tollbeam
