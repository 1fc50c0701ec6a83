#include "preferences/Prefs.h"

namespace tollbeam {

const Dictionary& Prefs::defaults() {
  static const Dictionary all = [] {
    Dictionary defaults;
    for (const PrefsKey& row : kPrefsKeys) {
      defaults.insert_or_assign(
          std::string(row.key),
          std::visit([](auto value) { return Value(value); }, row.registeredDefault));
    }
    return defaults;
  }();
  return all;
}

Prefs Prefs::current(UserDefaults& store) {
  store.registerDefaults(defaults());
  Prefs prefs;
  for (const PrefsKey& row : kPrefsKeys) {
    if (const auto* flag = std::get_if<bool Prefs::*>(&row.member)) {
      prefs.*(*flag) = store.boolForKey(row.key);
    } else if (const auto* number = std::get_if<std::int64_t Prefs::*>(&row.member)) {
      prefs.*(*number) = store.integerForKey(row.key);
    } else if (const auto* kind = std::get_if<AlertKind>(&row.member)) {
      prefs.sounds[*kind] = store.stringForKey(row.key).value_or(kDefaultSound);
    }
  }
  return prefs;
}

bool Prefs::inQuietHours(Date now, const Calendar& calendar) const {
  if (!quietEnabled || quietStart == quietEnd) return false;
  const auto [hour, minute] = calendar.timeOfDay(now);
  const std::int64_t m = minutesAfterMidnight(hour, minute);
  if (quietStart < quietEnd) return quietStart <= m && m < quietEnd;
  return m >= quietStart || m < quietEnd;
}

std::string Prefs::sound(AlertKind kind) const {
  const auto entry = sounds.find(kind);
  return entry == sounds.end() ? kDefaultSound : entry->second;
}

std::optional<Date> Prefs::snoozeUntil(const UserDefaults& store, Date now) {
  const Date deadline{store.doubleForKey(kSnoozeUntilKey)};
  if (now < deadline) return deadline;
  return std::nullopt;
}

void Prefs::setSnoozeUntil(UserDefaults& store, std::optional<Date> deadline) {
  store.set(kSnoozeUntilKey, deadline ? Value(deadline->secondsSince1970) : Value(0));
}

}  // namespace tollbeam
