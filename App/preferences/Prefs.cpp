#include "preferences/Prefs.h"

#include "preferences/PrefsKeys.h"

namespace tollbeam {

namespace {

Dictionary registeredDefaults() {
  Dictionary all;
  for (const PrefsKey& row : kPrefsKeys) {
    if (const auto* flag = std::get_if<bool>(&row.registeredDefault)) {
      all.insert_or_assign(std::string(row.key), *flag);
    } else if (const auto* number = std::get_if<std::int64_t>(&row.registeredDefault)) {
      all.insert_or_assign(std::string(row.key), *number);
    } else if (const auto* text = std::get_if<std::string_view>(&row.registeredDefault)) {
      all.insert_or_assign(std::string(row.key), std::string(*text));
    }
  }
  return all;
}

}  // namespace

const Dictionary& Prefs::defaults() {
  static const Dictionary all = registeredDefaults();
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
  if (deadline) {
    store.set(kSnoozeUntilKey, deadline->secondsSince1970);
  } else {
    store.set(kSnoozeUntilKey, std::int64_t{0});
  }
}

}  // namespace tollbeam
