// The calendar of the C library: the zone of $TZ, else of /etc/localtime, as it is at each call.
#pragma once

#include "platform/Calendar.h"

namespace tollbeam {

class LocalCalendar final : public Calendar {
 public:
  [[nodiscard]] TimeOfDay timeOfDay(Date instant) const override;
  [[nodiscard]] CalendarDay day(Date instant) const override;
  [[nodiscard]] std::optional<Date> startOfDay(CalendarDay day) const override;
  [[nodiscard]] std::optional<Date> instant(CalendarDay day, TimeOfDay time) const override;
};

}  // namespace tollbeam
