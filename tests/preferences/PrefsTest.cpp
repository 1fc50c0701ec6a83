#include "preferences/Prefs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class PrefsTest : public testing::Test {
 protected:
  Prefs quietHours(int startHour, int endHour) {
    store.set("quietEnabled", true);
    store.set("quietStart", std::int64_t{startHour * 60});
    store.set("quietEnd", std::int64_t{endHour * 60});
    return Prefs::current(store);
  }
  static Date at(int hour, int minute, double second = 0) {
    return {hour * 3600 + minute * 60 + second};
  }

  RecordedUserDefaults store;
  RecordedCalendar calendar;
};

TEST_F(PrefsTest, UsesTheDefaultSoundForAKindWithoutOne) {
  store.set("lowSound", "Basso");
  Prefs prefs = Prefs::current(store);
  EXPECT_EQ(prefs.sound(AlertKind::low), "Basso");
  prefs.sounds.erase(AlertKind::low);
  EXPECT_EQ(prefs.sound(AlertKind::low), "default");
}

TEST_F(PrefsTest, AFreshStoreYieldsTheDefaultsAndStaysEmpty) {
  const Prefs prefs = Prefs::current(store);
  EXPECT_TRUE(prefs.limitEnabled && prefs.repeatReminder && prefs.lowEnabled && prefs.longEnabled &&
              prefs.healthEnabled && prefs.lowPowerEnabled);
  EXPECT_EQ(prefs.limit, 80);
  EXPECT_EQ(prefs.low, 20);
  EXPECT_EQ(prefs.longHours, 8);
  EXPECT_EQ(prefs.lowPowerAt, 30);
  EXPECT_FALSE(prefs.quietEnabled);
  EXPECT_EQ(prefs.quietStart, 22 * 60);
  EXPECT_EQ(prefs.quietEnd, 7 * 60);
  EXPECT_TRUE(prefs.showPercent);
  EXPECT_FALSE(prefs.showTime);
  ASSERT_EQ(prefs.sounds.size(), 5U);
  for (const auto& [kind, sound] : prefs.sounds) EXPECT_EQ(sound, "default") << rawValue(kind);
  EXPECT_TRUE(store.values.empty());
}

TEST_F(PrefsTest, RegistersTwentyDefaults) {
  EXPECT_EQ(Prefs::defaults().size(), 20U);
  EXPECT_FALSE(Prefs::defaults().contains("snoozeUntil"));
  EXPECT_FALSE(Prefs::defaults().contains("healthAlertSent"));
}

TEST_F(PrefsTest, EveryKeyIsReadIntoItsOwnMember) {
  const std::map<std::string, bool Prefs::*> flags = {{"limitEnabled", &Prefs::limitEnabled},
                                                      {"repeatReminder", &Prefs::repeatReminder},
                                                      {"lowEnabled", &Prefs::lowEnabled},
                                                      {"longEnabled", &Prefs::longEnabled},
                                                      {"lowPowerEnabled", &Prefs::lowPowerEnabled},
                                                      {"healthEnabled", &Prefs::healthEnabled},
                                                      {"quietEnabled", &Prefs::quietEnabled},
                                                      {"showPercent", &Prefs::showPercent},
                                                      {"showTime", &Prefs::showTime}};
  const std::map<std::string, std::int64_t Prefs::*> numbers = {
      {"limit", &Prefs::limit},           {"low", &Prefs::low},
      {"longHours", &Prefs::longHours},   {"lowPowerAt", &Prefs::lowPowerAt},
      {"quietStart", &Prefs::quietStart}, {"quietEnd", &Prefs::quietEnd}};
  const std::map<std::string, AlertKind> sounds = {{"limitSound", AlertKind::chargeLimit},
                                                   {"lowSound", AlertKind::low},
                                                   {"longSound", AlertKind::tooLong},
                                                   {"lowPowerSound", AlertKind::lowPower},
                                                   {"healthSound", AlertKind::health}};
  const Prefs before = Prefs::current(store);
  const auto with = [](const std::string& key, const Value& value) {
    RecordedUserDefaults changed;
    changed.set(key, value);
    return Prefs::current(changed);
  };
  for (const auto& [key, member] : flags) {
    Prefs expected = before;
    expected.*member = !(before.*member);
    EXPECT_EQ(with(key, expected.*member), expected) << key;
  }
  for (const auto& [key, member] : numbers) {
    Prefs expected = before;
    ++(expected.*member);
    EXPECT_EQ(with(key, expected.*member), expected) << key;
  }
  for (const auto& [key, kind] : sounds) {
    Prefs expected = before;
    expected.sounds[kind] = "Glass";
    EXPECT_EQ(with(key, "Glass"), expected) << key;
  }
}

TEST_F(PrefsTest, ReadsNumbersWithoutClamping) {
  store.set("limit", -7);
  store.set("longHours", 1000000);
  EXPECT_EQ(Prefs::current(store).limit, -7);
  EXPECT_EQ(Prefs::current(store).longHours, 1000000);
}

TEST_F(PrefsTest, UsesTheDefaultSoundWhenTheStoredOneIsNoText) {
  store.set("lowSound", 5);
  store.set("limitSound", "Glass");
  const Prefs prefs = Prefs::current(store);
  EXPECT_EQ(prefs.sounds.at(AlertKind::low), "default");
  EXPECT_EQ(prefs.sounds.at(AlertKind::chargeLimit), "Glass");
}

TEST_F(PrefsTest, QuietHoursWrapOverMidnight) {
  const Prefs prefs = quietHours(22, 7);
  EXPECT_TRUE(prefs.inQuietHours(at(22, 0), calendar));
  EXPECT_TRUE(prefs.inQuietHours(at(6, 59, 59.9), calendar));
  EXPECT_FALSE(prefs.inQuietHours(at(7, 0), calendar));
  EXPECT_FALSE(prefs.inQuietHours(at(21, 59), calendar));
  EXPECT_TRUE(prefs.inQuietHours(at(0, 0), calendar));
}

TEST_F(PrefsTest, QuietHoursWithinADay) {
  const Prefs prefs = quietHours(9, 17);
  EXPECT_TRUE(prefs.inQuietHours(at(9, 0), calendar));
  EXPECT_TRUE(prefs.inQuietHours(at(16, 59), calendar));
  EXPECT_FALSE(prefs.inQuietHours(at(17, 0), calendar));
  EXPECT_FALSE(prefs.inQuietHours(at(8, 59), calendar));
}

TEST_F(PrefsTest, EqualStartAndEndAreNeverQuiet) {
  const Prefs prefs = quietHours(9, 9);
  for (int hour = 0; hour < 24; ++hour) EXPECT_FALSE(prefs.inQuietHours(at(hour, 0), calendar));
}

TEST_F(PrefsTest, QuietHoursCountOnlyWhenEnabled) {
  Prefs prefs = quietHours(9, 17);
  prefs.quietEnabled = false;
  EXPECT_FALSE(prefs.inQuietHours(at(12, 0), calendar));
}

TEST_F(PrefsTest, QuietHoursAreLocalTime) {
  const Prefs prefs = quietHours(9, 17);
  calendar.secondsEastOfUtc = 5.5 * 3600;
  EXPECT_TRUE(prefs.inQuietHours(at(3, 30), calendar));
  EXPECT_FALSE(prefs.inQuietHours(at(3, 29), calendar));
}

TEST_F(PrefsTest, ASnoozeEndsAtItsDeadline) {
  Prefs::setSnoozeUntil(store, Date{1000.5});
  EXPECT_EQ(Prefs::snoozeUntil(store, Date{1000.25}), Date{1000.5});
  EXPECT_FALSE(Prefs::snoozeUntil(store, Date{1000.5}));
  EXPECT_EQ(store.values.at("snoozeUntil").number(), 1000.5) << "expired, but not erased";
}

TEST_F(PrefsTest, NoSnoozeIsStoredAsTheIntegerZero) {
  Prefs::setSnoozeUntil(store, Date{1e12});
  Prefs::setSnoozeUntil(store, std::nullopt);
  EXPECT_EQ(store.values.at("snoozeUntil"), Value(std::int64_t{0}));
  EXPECT_FALSE(Prefs::snoozeUntil(store, Date{0}));
}

}  // namespace
}  // namespace tollbeam
