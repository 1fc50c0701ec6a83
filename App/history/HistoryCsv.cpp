#include "history/HistoryCsv.h"

#include <chrono>
#include <cmath>
#include <cstdio>

namespace tollbeam {

std::string csvText(std::span<const Sample> samples) {
  using namespace std::chrono;
  // Years 0000 to 9999, which four digits can say. Only a clock gone mad leaves them. fmax and fmin
  // also turn NaN into a bound.
  constexpr double kFirstSecond = -62167219200.0;
  constexpr double kLastSecond = 253402300799.0;
  std::string text = "timestamp,percent,charging,plugged_in\n";
  text.reserve(text.size() + samples.size() * 36);
  for (const Sample& sample : samples) {
    const double shown = std::fmin(std::fmax(sample.t, kFirstSecond), kLastSecond);
    const sys_seconds instant{seconds{static_cast<std::int64_t>(std::floor(shown))}};
    const auto midnight = floor<days>(instant);
    const year_month_day date{midnight};
    const hh_mm_ss time{instant - midnight};
    char line[80];
    const int length = std::snprintf(
        line, sizeof line, "%04d-%02u-%02uT%02d:%02d:%02dZ,%lld,%s,%s\n",
        static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
        static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
        static_cast<long long>(sample.p), sample.c ? "true" : "false", sample.a ? "true" : "false");
    text.append(line, static_cast<std::size_t>(length));
  }
  return text;
}

}  // namespace tollbeam
