#include "preferences/Prefs.h"

#include <gtest/gtest.h>

#include "platform/recorded/RecordedPlatform.h"
#include "preferences/PrefsKeys.h"

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

TEST_F(PrefsTest, AKindWithoutASoundHasTheDefaultOne) {
  store.set("lowSound", "Basso");
  Prefs prefs = Prefs::current(store);
  EXPECT_EQ(prefs.sound(AlertKind::low), "Basso");
  prefs.sounds.erase(AlertKind::low);
  EXPECT_EQ(prefs.sound(AlertKind::low), kDefaultSound);
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
  EXPECT_FALSE(Prefs::defaults().contains(kSnoozeUntilKey));
  EXPECT_FALSE(Prefs::defaults().contains(kHealthAlertSentKey));
}

TEST_F(PrefsTest, EveryKeyIsReadIntoItsOwnMember) {
  const Prefs before = Prefs::current(store);
  for (const PrefsKey& row : kPrefsKeys) {
    RecordedUserDefaults changed;
    if (const auto* flag = std::get_if<bool>(&row.registeredDefault)) {
      changed.set(row.key, !*flag);
    } else if (const auto* number = std::get_if<std::int64_t>(&row.registeredDefault)) {
      changed.set(row.key, *number + 1);
    } else {
      changed.set(row.key, "Glass");
    }
    Prefs expected = before;
    if (const auto* flag = std::get_if<bool Prefs::*>(&row.member)) {
      expected.*(*flag) = !(before.*(*flag));
    } else if (const auto* number = std::get_if<std::int64_t Prefs::*>(&row.member)) {
      ++(expected.*(*number));
    } else {
      expected.sounds[std::get<AlertKind>(row.member)] = "Glass";
    }
    EXPECT_EQ(Prefs::current(changed), expected) << row.key;
  }
}

TEST_F(PrefsTest, TakesNumbersAsTheyAre) {
  store.set("limit", -7);
  store.set("longHours", 1000000);
  EXPECT_EQ(Prefs::current(store).limit, -7);
  EXPECT_EQ(Prefs::current(store).longHours, 1000000);
}

TEST_F(PrefsTest, ASoundThatIsNoTextIsTheDefault) {
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

TEST_F(PrefsTest, ASnoozeDeadlineIsOverAtItsOwnSecond) {
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
