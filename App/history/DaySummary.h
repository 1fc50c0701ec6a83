// What a day of samples comes to: average, lowest and highest charge, and minutes spent charging.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "history/Sample.h"
#include "platform/Calendar.h"
#include "values/Date.h"

namespace tollbeam {

struct DaySummary {
  Date day;                          ///< the day's first instant; identifies it
  std::int64_t avgPercent = 0;       ///< weighted by time, rounded half away from zero
  std::int64_t minPercent = 0;       ///< of the samples
  std::int64_t maxPercent = 0;       ///< of the samples
  std::int64_t chargingMinutes = 0;  ///< whole minutes, cut off

  friend bool operator==(const DaySummary&, const DaySummary&) = default;
};

/// The first instant of the day that lies `days` − 1 calendar days before the day of `now`; `now`
/// itself when that day is beyond the range of the calendar.
[[nodiscard]] Date firstSummarisedInstant(int days, Date now, const Calendar& calendar);

/// One summary for each calendar day that has samples, newest first. An interval between two
/// samples counts for the day in which it begins; one of more than 900 seconds counts for nothing.
[[nodiscard]] std::vector<DaySummary> daySummaries(std::span<const Sample> samples,
                                                   const Calendar& calendar);

}  // namespace tollbeam
