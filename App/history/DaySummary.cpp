#include "history/DaySummary.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>

namespace tollbeam {

namespace {

// A longer silence is sleep or a program that did not run: the charge in between is unknown.
constexpr double kLongestInterval = 900;

struct Accumulator {
  double weight = 0;
  double sum = 0;
  std::int64_t lowest = 100;
  std::int64_t highest = 0;
  double chargingSeconds = 0;

  void addSample(const Sample& sample) {
    lowest = std::min(lowest, sample.p);
    highest = std::max(highest, sample.p);
  }
  void addInterval(const Sample& sample, double seconds) {
    if (!(seconds > 0 && seconds <= kLongestInterval)) return;
    weight += seconds;
    sum += seconds * static_cast<double>(sample.p);
    if (sample.c) chargingSeconds += seconds;
  }
  [[nodiscard]] std::int64_t average() const {
    // Lone samples have no weight; the highest charge stands for the day.
    if (!(weight > 0)) return highest;
    const double rounded = std::round(sum / weight);
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (!(rounded >= -kTwoTo63 && rounded < kTwoTo63)) std::abort();
    return static_cast<std::int64_t>(rounded);
  }
};

}  // namespace

Date firstSummarisedInstant(int days, Date now, const Calendar& calendar) {
  return calendar.startOfDay(calendar.day(now).plusDays(1 - days)).value_or(now);
}

std::vector<DaySummary> daySummaries(std::span<const Sample> samples, const Calendar& calendar) {
  std::map<CalendarDay, Accumulator, std::greater<>> days;  // newest first
  for (std::size_t i = 0; i < samples.size(); ++i) {
    Accumulator& day = days[calendar.day(Date{samples[i].t})];
    day.addSample(samples[i]);
    if (i + 1 < samples.size()) day.addInterval(samples[i], samples[i + 1].t - samples[i].t);
  }
  std::vector<DaySummary> summaries;
  for (const auto& [day, acc] : days) {
    const auto start = calendar.startOfDay(day);
    if (!start) continue;
    summaries.push_back({.day = *start,
                         .avgPercent = acc.average(),
                         .minPercent = acc.lowest,
                         .maxPercent = acc.highest,
                         .chargingMinutes = static_cast<std::int64_t>(acc.chargingSeconds / 60)});
  }
  return summaries;
}

}  // namespace tollbeam
