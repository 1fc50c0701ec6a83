#include "history/HistoryStore.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
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

constexpr const char* kUnreadable = ".unreadable";
constexpr const char* kDamaged = ".damaged";
constexpr const char* kPruned = ".pruned";
constexpr const char* kChanged = ".changed";

std::size_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

void sortByTime(std::vector<Sample>& samples) {
  std::stable_sort(samples.begin(), samples.end(),
                   [](const Sample& x, const Sample& y) { return x.t < y.t; });
}

auto firstAtOrAfter(const std::vector<Sample>& samples, Date instant) {
  return std::find_if(samples.begin(), samples.end(),
                      [&](const Sample& s) { return s.t >= instant.secondsSince1970; });
}

}  // namespace

std::optional<std::string> HistoryStore::folder(const FileManager& files) {
  auto support = files.applicationSupportDirectory();
  if (support) *support += "/Tollbeam";
  return support;
}

HistoryStore::HistoryStore(FileManager& files, Date now) : files_(files) {
  auto home = folder(files_);
  if (!home) std::abort();
  folder_ = *std::move(home);
  files_.createDirectory(folder_);
  url_ = folder_ + "/history.json";
  load(now);
}

void HistoryStore::load(Date now) {
  // Before the contents, so that the next save notices a change in between.
  version_ = files_.version(url_);
  auto text = files_.contents(url_);
  if (!text) {
    if (version_) lostSuffix_ = kUnreadable;
    return;
  }
  textHash_ = hashOf(*text);
  const bool isEmpty = text->empty();
  auto decoded = decodeSamples(*std::move(text));
  if (!decoded) {
    if (!isEmpty) lostSuffix_ = kDamaged;
    return;
  }
  samples_ = *std::move(decoded);
  sortByTime(samples_);
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
  ++recorded_;
  prune(at);
  if (powerChanged || at - lastSave_ > kSaveSpacing) save(at);
}

void HistoryStore::removeAll() {
  samples_.clear();
  recorded_ = 0;
  lostSuffix_.clear();
  version_ = files_.version(url_);
  for (const char* suffix : {kUnreadable, kDamaged, kPruned, kChanged}) {
    files_.removeKept(url_, suffix);
  }
}

void HistoryStore::followClock(double step, Date now) {
  lastSave_ = std::min(lastSave_ + step, now);
  for (auto sample = samples_.end() - recorded_; sample != samples_.end(); ++sample) {
    sample->t += step;
  }
  sortByTime(samples_);
}

void HistoryStore::save(Date now) {
  // Before the write, so that a full disk is not tried again at every sample.
  lastSave_ = now;
  const auto suffix = suffixToKeep();
  const auto text = encodeSamples(samples_);
  if (!text) return;
  files_.createDirectory(folder_);
  if (files_.write(url_, *text, {.keepOldWithSuffix = suffix})) return;
  // Another program may have replaced the file already: the next save compares the contents.
  version_.reset();
  textHash_ = hashOf(*text);
  lostSuffix_.clear();
}

std::string HistoryStore::suffixToKeep() const {
  const auto version = files_.version(url_);
  if (!version || version == version_) return lostSuffix_;
  // Backups and changes of the mode give the same text a new version.
  const auto text = files_.contents(url_);
  const bool holdsNothingElse = text && (text->empty() || hashOf(*text) == textHash_);
  return holdsNothingElse ? lostSuffix_ : kChanged;
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
  const auto kept = firstAtOrAfter(samples_, now - kKeptSeconds);
  const auto dropped = static_cast<std::size_t>(kept - samples_.begin());
  if (dropped > samples_.size() / 2) lostSuffix_ = kPruned;
  samples_.erase(samples_.begin(), kept);
  recorded_ = std::min(recorded_, std::ssize(samples_));
}

}  // namespace tollbeam
