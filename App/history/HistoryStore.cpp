#include "history/HistoryStore.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "history/HistoryCsv.h"
#include "history/HistoryJson.h"

namespace tollbeam {

namespace {

constexpr double kKeptSeconds = 30 * 86400.0;  // a count of seconds, not calendar days
constexpr double kSaveSpacing = 300;
constexpr double kEstimateFreshness = 600;
constexpr double kEstimateGap = 900;

auto firstAtOrAfter(const std::vector<Sample>& samples, Date instant) {
  return std::find_if(samples.begin(), samples.end(),
                      [&](const Sample& s) { return s.t >= instant.secondsSince1970; });
}

}  // namespace

HistoryStore::HistoryStore(FileManager& files, Date now) : files_(files) {
  const auto support = files_.applicationSupportDirectory();
  if (!support) std::abort();
  const std::string folder = *support + "/Tollbeam";
  files_.createDirectory(folder);
  url_ = folder + "/history.json";
  auto text = files_.contents(url_);
  if (!text) return;
  auto decoded = decodeSamples(*std::move(text));
  if (!decoded) return;
  samples_ = *std::move(decoded);
  std::stable_sort(samples_.begin(), samples_.end(),
                   [](const Sample& x, const Sample& y) { return x.t < y.t; });
  prune(now);
}

void HistoryStore::record(const BatteryState& state, Date at, bool force) {
  if (!state.hasBattery) return;
  const Sample candidate{
      .t = at.secondsSince1970, .p = state.percent, .c = state.isCharging, .a = state.pluggedIn};
  bool powerChanged = false;
  if (!samples_.empty()) {
    const Sample& last = samples_.back();
    powerChanged = last.a != candidate.a || last.c != candidate.c;
    if (!force && !powerChanged && last.p == candidate.p) return;
  }
  samples_.push_back(candidate);
  prune(at);
  if (powerChanged || at - lastSave_ > kSaveSpacing) save(at);
}

void HistoryStore::save(Date now) {
  // Before the write, so that a full disk is not tried again at every sample.
  lastSave_ = now;
  if (const auto text = encodeSamples(samples_)) files_.write(url_, *text);
}

std::span<const Sample> HistoryStore::samples(Date since) const {
  return {firstAtOrAfter(samples_, since), samples_.end()};
}

std::optional<Date> HistoryStore::pluggedSinceEstimate(Date now) const {
  if (samples_.empty() || !samples_.back().a) return std::nullopt;
  double start = samples_.back().t;
  if (now.secondsSince1970 - start >= kEstimateFreshness) return std::nullopt;
  for (auto earlier = std::next(samples_.rbegin()); earlier != samples_.rend(); ++earlier) {
    if (!earlier->a || start - earlier->t > kEstimateGap) break;
    start = earlier->t;
  }
  return Date{start};
}

std::string HistoryStore::csv() const { return csvText(samples_); }

std::vector<DaySummary> HistoryStore::dailySummaries(int days, Date now,
                                                     const Calendar& calendar) const {
  return daySummaries(samples(firstSummarisedInstant(days, now, calendar)), calendar);
}

void HistoryStore::prune(Date now) {
  samples_.erase(samples_.begin(), firstAtOrAfter(samples_, now - kKeptSeconds));
}

}  // namespace tollbeam
