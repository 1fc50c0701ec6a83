// The user's calendar and time zone, daylight saving included. Every call uses the zone that is in
// force at the call, so a traveller needs no restart.
#pragma once

#include "platform/Date.h"

namespace tollbeam {

struct TimeOfDay {
  int hour = 0;    ///< 0 to 23
  int minute = 0;  ///< 0 to 59

  friend bool operator==(const TimeOfDay&, const TimeOfDay&) = default;
};

class Calendar {
 public:
  Calendar() = default;
  Calendar(const Calendar&) = delete;
  Calendar& operator=(const Calendar&) = delete;
  virtual ~Calendar() = default;

  /// The local wall-clock time; 00:00 for an instant that the calendar cannot name.
  [[nodiscard]] virtual TimeOfDay timeOfDay(Date instant) const = 0;
};

}  // namespace tollbeam
