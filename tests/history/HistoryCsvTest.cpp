#include "history/HistoryCsv.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <random>
#include <sstream>
#include <vector>

namespace tollbeam {
namespace {

constexpr const char* kHeader = "timestamp,percent,charging,plugged_in\n";

std::string line(double t) {
  return csvText(std::vector<Sample>{{t, 55, false, true}}).substr(std::string(kHeader).size());
}

TEST(HistoryCsv, WithoutSamplesIsTheHeaderAlone) { EXPECT_EQ(csvText({}), kHeader); }

TEST(HistoryCsv, WritesALinePerSampleOldestFirst) {
  EXPECT_EQ(csvText(std::vector<Sample>{{0, 55, false, true}, {1740837909, 101, true, false}}),
            std::string(kHeader) +
                "1970-01-01T00:00:00Z,55,false,true\n2025-03-01T14:05:09Z,101,true,false\n");
}

TEST(HistoryCsv, TruncatesSeconds) {
  EXPECT_EQ(line(59.999), "1970-01-01T00:00:59Z,55,false,true\n");
  EXPECT_EQ(line(-0.001), "1969-12-31T23:59:59Z,55,false,true\n");
  EXPECT_EQ(line(-60), "1969-12-31T23:59:00Z,55,false,true\n");
}

TEST(HistoryCsv, PrintsPercentAsStored) {
  EXPECT_EQ(csvText(std::vector<Sample>{{0, -7, false, false}}),
            std::string(kHeader) + "1970-01-01T00:00:00Z,-7,false,false\n");
}

TEST(HistoryCsv, NamesTheSameInstantsAsTheSystem) {
  std::mt19937 random(5);
  std::vector<Sample> samples;
  std::string expected = kHeader;
  for (int i = 0; i < 5000; ++i) {
    const double t = std::uniform_real_distribution(-6e10, 2.5e11)(random);
    samples.push_back({t, 1, true, true});
    const auto seconds = static_cast<std::time_t>(std::floor(t));
    std::tm tm{};
    gmtime_r(&seconds, &tm);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ,1,true,true\n",
                  tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
    expected += text;
  }
  EXPECT_EQ(csvText(samples), expected);
}

TEST(HistoryCsv, TimesBeyondFourDigitYearsAreClamped) {
  EXPECT_EQ(line(1e300), "9999-12-31T23:59:59Z,55,false,true\n");
  EXPECT_EQ(line(-1e300), "0000-01-01T00:00:00Z,55,false,true\n");
  EXPECT_EQ(line(std::nan("")), "0000-01-01T00:00:00Z,55,false,true\n");
}

}  // namespace
}  // namespace tollbeam
