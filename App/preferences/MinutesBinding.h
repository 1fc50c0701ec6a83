// A time of day stored as minutes after midnight, as the settings show and change it. It is shown
// as a time of today's clock: one that the clock jumps over today appears as the first after the
// jump, and a number that is no time of day as the current time. Only the user's own choice is
// written; showing writes nothing.
#pragma once

#include <string_view>

#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/UserDefaults.h"
#include "values/Date.h"

namespace tollbeam {

/// The instant that stands for `minutes` after midnight on the day of `now`.
[[nodiscard]] Date timeOfMinutes(std::int64_t minutes, Date now, const Calendar& calendar);

class MinutesBinding {
 public:
  /// All must outlive the binding. `key` is that of a whole number.
  MinutesBinding(UserDefaults& store, std::string_view key, const Calendar& calendar,
                 const Clock& clock)
      : store_(store), key_(key), calendar_(calendar), clock_(clock) {}

  [[nodiscard]] TimeOfDay time() const;

  /// What today's clock shows at `time`: that time, or the first after a jump.
  [[nodiscard]] TimeOfDay onTodaysClock(TimeOfDay time) const;

  /// Stores the minutes, 0 to 1439, of what today's clock shows at `chosen`.
  void setTime(TimeOfDay chosen);

 private:
  UserDefaults& store_;
  std::string_view key_;
  const Calendar& calendar_;
  const Clock& clock_;
};

}  // namespace tollbeam
