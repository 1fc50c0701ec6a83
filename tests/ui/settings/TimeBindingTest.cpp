// The time fields of the quiet hours on days on which the clock changes.
#include <gtest/gtest.h>

#include "platform/freedesktop/session/LocalCalendar.h"
#include "recorded/RecordedPlatform.h"
#include "support/Sandbox.h"
#include "support/Widgets.h"
#include "ui/settings/Bindings.h"

namespace tollbeam {
namespace {

constexpr std::int64_t at(int hour, int minute) { return hour * 60 + minute; }

/// A time field bound to the quiet hours' start, at noon of a day in a zone.
class TimeBindingTest : public testing::Test {
 protected:
  void today(const char* zone, CalendarDay day, const char* locale) {
    here.emplace("TZ", zone);
    clock.set(*calendar.startOfDay(day) + 12 * 3600.0);
    field.setLocale(QLocale(QString::fromLatin1(locale)));
    bindings.bind(&field, MinutesBinding(store, "quietStart", calendar, clock));
  }
  void spring(const char* locale) { today("Europe/Berlin", {2024, 3, 31}, locale); }

  void focus() {
    test::showActive(field);
    field.setFocus(Qt::TabFocusReason);
    field.setSelectedSection(QDateTimeEdit::HourSection);
  }
  void type(const char* keys) { QTest::keyClicks(&field, QString::fromLatin1(keys)); }
  void key(Qt::Key which) { QTest::keyClick(&field, which); }
  void storeMinutes(std::int64_t minutes) { store.set("quietStart", minutes); }
  [[nodiscard]] std::int64_t stored() const { return store.integerForKey("quietStart"); }
  [[nodiscard]] std::int64_t shown() const {
    return at(field.timeOfDay().hour, field.timeOfDay().minute);
  }

  std::optional<test::Environment> here;
  LocalCalendar calendar;
  ManualClock clock{{0}};
  RecordedUserDefaults store;
  RecordedAppearance appearance;
  Style style{appearance};
  TimeField field{style};
  Bindings bindings{store};
};

class TypingInSpring : public TimeBindingTest, public testing::WithParamInterface<const char*> {};

TEST_P(TypingInSpring, StoresWhatIsTyped) {
  spring(GetParam());
  for (const auto& [keys, minutes] : std::initializer_list<std::pair<const char*, std::int64_t>>{
           {"2200", at(22, 0)}, {"2315", at(23, 15)}, {"2059", at(20, 59)}, {"1205", at(12, 5)}}) {
    storeMinutes(at(10, 0));
    focus();
    type(keys);
    EXPECT_EQ(stored(), minutes) << keys;
    EXPECT_EQ(shown(), minutes) << keys;
    field.clearFocus();
    EXPECT_EQ(shown(), minutes) << keys;
  }
}

TEST_P(TypingInSpring, StoresTheFirstTimeAfterTheJumpAndShowsItWhenTypingEnds) {
  spring(GetParam());
  storeMinutes(at(10, 0));
  focus();
  type("02");
  EXPECT_EQ(stored(), at(3, 0));
  EXPECT_EQ(field.timeOfDay().hour, 2) << "unchanged while typing";
  field.setSelectedSection(QDateTimeEdit::MinuteSection);
  type("30");
  EXPECT_EQ(stored(), at(3, 0));
  EXPECT_EQ(shown(), at(2, 30));
  bindings.show();
  EXPECT_EQ(shown(), at(2, 30));
  field.clearFocus();
  EXPECT_EQ(shown(), at(3, 0));
  EXPECT_EQ(stored(), at(3, 0));
}

// Locales that write hours before ten with two digits and with one.
INSTANTIATE_TEST_SUITE_P(Locales, TypingInSpring, testing::Values("de_DE", "fi_FI", "bg_BG"));

TEST_F(TimeBindingTest, HourStepsSkipTheJumpInBothDirections) {
  spring("fi_FI");
  storeMinutes(at(4, 30));
  focus();
  for (const std::int64_t next : {at(3, 30), at(1, 30), at(0, 30), at(23, 30)}) {
    key(Qt::Key_Down);
    EXPECT_EQ(shown(), next);
    EXPECT_EQ(stored(), next);
  }
  for (const std::int64_t next : {at(0, 30), at(1, 30), at(3, 30), at(4, 30)}) {
    key(Qt::Key_Up);
    EXPECT_EQ(shown(), next);
    EXPECT_EQ(stored(), next);
  }
}

TEST_F(TimeBindingTest, StepsFromASkippedTimeStartAtTheShownTime) {
  spring("de_DE");
  storeMinutes(at(2, 30));
  EXPECT_EQ(shown(), at(3, 0));
  focus();
  EXPECT_EQ(stored(), at(2, 30)) << "showing stores nothing";
  key(Qt::Key_Down);
  EXPECT_EQ(stored(), at(1, 0));
}

TEST_F(TimeBindingTest, MinuteStepsSkipAJumpOfHalfAnHour) {
  today("Australia/Lord_Howe", {2023, 10, 1}, "en_GB");
  storeMinutes(at(2, 31));
  focus();
  field.setSelectedSection(QDateTimeEdit::MinuteSection);
  for (const std::int64_t next : {at(2, 30), at(2, 59), at(2, 58)}) {
    key(Qt::Key_Down);
    EXPECT_EQ(stored(), next);
    EXPECT_EQ(shown(), next);
  }
}

TEST_F(TimeBindingTest, TheRepeatedHourInAutumnIsSteppedOnce) {
  today("Europe/Berlin", {2024, 10, 27}, "fi_FI");
  storeMinutes(at(3, 30));
  focus();
  for (const std::int64_t next : {at(2, 30), at(1, 30), at(0, 30)}) {
    key(Qt::Key_Down);
    EXPECT_EQ(stored(), next);
    EXPECT_EQ(shown(), next);
  }
  type("0230");
  EXPECT_EQ(stored(), at(2, 30));
  field.clearFocus();
  EXPECT_EQ(shown(), at(2, 30));
}

TEST_F(TimeBindingTest, ATimeStoredByAnotherProgramReplacesTheTypedOne) {
  spring("de_DE");
  storeMinutes(at(10, 0));
  focus();
  type("02");
  storeMinutes(at(6, 45));
  EXPECT_EQ(shown(), at(6, 45));
}

}  // namespace
}  // namespace tollbeam
