#include "recorded/RecordedPlatform.h"

#include <cmath>
#include <functional>

namespace tollbeam {

std::optional<Subscription> RecordedPowerSources::observe(std::function<void()> changed) {
  ++observations;
  if (!observable) return std::nullopt;
  return changes.add(std::move(changed));
}

void RecordedUserDefaults::set(std::string_view key, Value value) {
  ++writes;
  values.insert_or_assign(std::string(key), std::move(value));
  changes.notify();
}

std::optional<std::string> RecordedFileManager::contents(const std::string& path) const {
  const auto at = files.find(path);
  if (at == files.end() || unreadable.contains(path)) return std::nullopt;
  return at->second;
}

std::optional<FileVersion> RecordedFileManager::version(const std::string& path) const {
  const auto at = files.find(path);
  if (at == files.end()) return std::nullopt;
  const auto times = touched.find(path);
  return FileVersion{static_cast<std::int64_t>(std::hash<std::string>()(at->second)),
                     times == touched.end() ? 0 : times->second};
}

std::optional<std::string> RecordedFileManager::write(const std::string& path,
                                                      std::string_view bytes,
                                                      const WriteOptions& options) {
  ++writes;
  if (failure) return failure;
  if (const auto old = files.find(path); old != files.end() && !options.keepOldWithSuffix.empty()) {
    std::string& kept = files[path + options.keepOldWithSuffix];
    if (kept.size() / 2 <= old->second.size()) kept = old->second;
    unreadable.erase(path);
  }
  files.insert_or_assign(path, replacement.value_or(std::string(bytes)));
  if (options.isDocument) documents.insert(path);
  return std::nullopt;
}

namespace {

// The calendar of the standard library knows the years to 32767.
bool hasName(double local) { return std::fabs(local) < 9e11; }

}  // namespace

TimeOfDay RecordedCalendar::timeOfDay(Date instant) const {
  constexpr double kSecondsPerDay = 86400;
  const double local = instant.secondsSince1970 + secondsEastOfUtc;
  if (!hasName(local)) return {};
  const int second = static_cast<int>(local - std::floor(local / kSecondsPerDay) * kSecondsPerDay);
  return {.hour = second / 3600, .minute = second / 60 % 60};
}

CalendarDay RecordedCalendar::day(Date instant) const {
  const double local = instant.secondsSince1970 + secondsEastOfUtc;
  if (!hasName(local)) return {};
  return CalendarDay{}.plusDays(static_cast<int>(std::floor(local / 86400)));
}

std::optional<Date> RecordedCalendar::startOfDay(CalendarDay day) const {
  using namespace std::chrono;
  const sys_days days{year{day.year} / day.month / day.day};
  return Date{static_cast<double>(days.time_since_epoch().count()) * 86400 - secondsEastOfUtc};
}

std::optional<Date> RecordedCalendar::instant(CalendarDay day, TimeOfDay time) const {
  const auto start = startOfDay(day);
  if (!start || !time.isOnAClock()) return std::nullopt;
  return *start + (time.hour * 60 + time.minute) * 60.0;
}

Platform RecordedPlatform::ports() {
  return {.mainQueue = mainQueue,
          .clock = clock,
          .calendar = calendar,
          .fileManager = fileManager,
          .userDefaults = userDefaults,
          .mainBundle = mainBundle,
          .powerSources = powerSources,
          .processInfo = processInfo,
          .workspace = workspace,
          .notificationCenter = notificationCenter,
          .dialogs = dialogs,
          .systemSounds = systemSounds,
          .loginItem = loginItem,
          .appearance = appearance,
          .compositor = compositor};
}

}  // namespace tollbeam
