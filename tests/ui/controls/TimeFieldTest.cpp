#include "ui/controls/TimeField.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "recorded/RecordedPlatform.h"
#include "support/Widgets.h"
#include "texts/LocaleFormats.h"

namespace tollbeam {
namespace {

class TimeFieldTest : public testing::Test {
 protected:
  TimeFieldTest() {
    field.setLocale(QLocale(QLocale::German, QLocale::Germany));
    field.resize(field.sizeHint());
    field.setTimeOfDay({22, 0});
    QObject::connect(&field, &TimeField::chosen,
                     [this](TimeOfDay time) { chosen.push_back(time); });
  }
  void focus() {
    test::showActive(field);
    field.setFocus(Qt::TabFocusReason);
  }
  void type(const char* keys) { QTest::keyClicks(&field, QString::fromLatin1(keys)); }
  void key(Qt::Key which) { QTest::keyClick(&field, which); }

  RecordedAppearance appearance;
  Style style{appearance};
  TimeField field{style};
  std::vector<TimeOfDay> chosen;
};

TEST_F(TimeFieldTest, ShowsTheTimeAsTheLocaleWritesIt) {
  EXPECT_EQ(field.text(), QStringLiteral("22:00"));
  field.setTimeOfDay({7, 5});
  EXPECT_EQ(field.text(), QStringLiteral("07:05"));
  field.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_EQ(field.text().simplified(), QStringLiteral("7:05 AM"));
  field.setTimeOfDay({22, 0});
  EXPECT_EQ(field.text().simplified(), QStringLiteral("10:00 PM"));
}

TEST_F(TimeFieldTest, WritesNoMoreThanHoursAndMinutesInEveryLocale) {
  for (const QLocale& locale :
       QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
    TimeField other(style);
    other.setLocale(locale);
    other.setTimeOfDay({15, 5});
    // Where Qt loses its place in the locale's own format.
    const bool has24Hours = shortTimeFormat(locale).startsWith(u'A', Qt::CaseInsensitive) &&
                            locale.amText().size() != locale.pmText().size();
    EXPECT_EQ(other.text(), has24Hours ? locale.toString(QTime(15, 5), QStringLiteral("HH:mm"))
                                       : timeText({15, 5}, locale))
        << locale.name().toStdString();
    const auto digits = std::ranges::count_if(other.text(), [](QChar c) { return c.isNumber(); });
    EXPECT_LE(digits, 4) << locale.name().toStdString();
    EXPECT_EQ(other.displayedSections() & ~QDateTimeEdit::Sections(QDateTimeEdit::AmPmSection),
              QDateTimeEdit::HourSection | QDateTimeEdit::MinuteSection)
        << locale.name().toStdString();
  }
}

TEST_F(TimeFieldTest, CanBeSteppedInEveryLocale) {
  for (const QLocale& locale :
       QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
    TimeField other(style);
    other.setLocale(locale);
    other.setTimeOfDay({15, 5});
    other.setSelectedSection(QDateTimeEdit::HourSection);
    other.stepBy(1);
    other.setSelectedSection(QDateTimeEdit::MinuteSection);
    other.stepBy(-1);
    EXPECT_EQ(other.timeOfDay(), (TimeOfDay{16, 4})) << locale.name().toStdString();
  }
}

TEST_F(TimeFieldTest, EmitsNothingForTimesThatTheProgramSets) {
  field.setTimeOfDay({0, 0});
  field.setTimeOfDay({23, 59});
  field.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
  focus();
  field.clearFocus();
  EXPECT_TRUE(chosen.empty());
}

TEST_F(TimeFieldTest, TypingChoosesTheTypedTime) {
  focus();
  type("0730");
  ASSERT_FALSE(chosen.empty());
  EXPECT_EQ(chosen.back(), (TimeOfDay{7, 30}));
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{7, 30}));
}

TEST_F(TimeFieldTest, TypingALetterChoosesTheHalfOfTheDay) {
  field.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
  focus();
  type("1130a");
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{11, 30}));
  key(Qt::Key_Up);
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{23, 30}));
}

TEST_F(TimeFieldTest, ArrowsChangeTheChosenPart) {
  focus();
  key(Qt::Key_Up);
  EXPECT_EQ(chosen.back(), (TimeOfDay{23, 0}));
  key(Qt::Key_Right);
  key(Qt::Key_Down);
  EXPECT_EQ(chosen.back().minute, 59);
}

TEST_F(TimeFieldTest, HoursWrapAround) {
  field.setTimeOfDay({23, 30});
  focus();
  key(Qt::Key_Up);
  EXPECT_EQ(chosen.back(), (TimeOfDay{0, 30}));
  key(Qt::Key_Down);
  EXPECT_EQ(chosen.back(), (TimeOfDay{23, 30}));
}

TEST_F(TimeFieldTest, ItsChevronsChangeTheChosenPart) {
  focus();
  const int x = field.width() - 12;
  QTest::mouseClick(&field, Qt::LeftButton, {}, {x, 5});
  EXPECT_EQ(chosen.back(), (TimeOfDay{23, 0}));
  QTest::mouseClick(&field, Qt::LeftButton, {}, {x, field.height() - 5});
  EXPECT_EQ(chosen.back(), (TimeOfDay{22, 0}));
}

TEST_F(TimeFieldTest, AClickChoosesThePartUnderIt) {
  focus();
  const int minutes = 10 + QFontMetrics(field.font()).horizontalAdvance(QStringLiteral("22:0"));
  QTest::mouseClick(&field, Qt::LeftButton, {}, {minutes, field.height() / 2});
  key(Qt::Key_Up);
  EXPECT_EQ(chosen.back(), (TimeOfDay{22, 1}));
  QTest::mouseClick(&field, Qt::LeftButton, {}, {14, field.height() / 2});
  key(Qt::Key_Up);
  EXPECT_EQ(chosen.back(), (TimeOfDay{23, 1}));
}

TEST_F(TimeFieldTest, TheWheelStepsOnlyWithTheFocus) {
  test::showActive(field);
  field.clearFocus();
  test::turnWheel(field, 120);
  EXPECT_TRUE(chosen.empty());
  focus();
  test::turnWheel(field, 120);
  EXPECT_EQ(chosen.back(), (TimeOfDay{23, 0}));
}

TEST_F(TimeFieldTest, ReadsTheSameInAMirroredWindow) {
  QWidget window;
  window.setLayoutDirection(Qt::RightToLeft);
  TimeField mirrored(style, &window);
  mirrored.setLocale(QLocale(QLocale::German, QLocale::Germany));
  mirrored.setTimeOfDay({22, 5});
  EXPECT_EQ(mirrored.text(), QStringLiteral("22:05"));
}

TEST_F(TimeFieldTest, AScreenReaderReadsAndChangesItsText) {
  QAccessibleInterface* heard = test::spoken(&field);
  EXPECT_EQ(heard->role(), QAccessible::SpinBox);
  ASSERT_NE(heard->textInterface(), nullptr);
  EXPECT_EQ(heard->textInterface()->text(0, 5), QStringLiteral("22:00"));
  heard->editableTextInterface()->replaceText(0, 5, QStringLiteral("07:30"));
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{7, 30}));
  EXPECT_EQ(chosen.back(), (TimeOfDay{7, 30}));
  auto* actions = heard->actionInterface();
  actions->doAction(QAccessibleActionInterface::increaseAction());
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{7, 31}));
  field.setEnabled(false);
  actions->doAction(QAccessibleActionInterface::decreaseAction());
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{7, 31}));
  EXPECT_EQ(heard->editableTextInterface(), nullptr);
}

TEST_F(TimeFieldTest, AScreenReaderReadsAndChangesItsMinutesAfterMidnight) {
  auto* heard = test::spoken(&field)->valueInterface();
  ASSERT_NE(heard, nullptr);
  EXPECT_EQ(heard->currentValue(), 1320);
  EXPECT_EQ(heard->minimumValue(), 0);
  EXPECT_EQ(heard->maximumValue(), 1439);
  EXPECT_EQ(heard->minimumStepSize(), 1);
  heard->setCurrentValue(450.9);
  EXPECT_EQ(chosen.back(), (TimeOfDay{7, 30}));
  for (const double nonsense : {-1.0, 1439.5, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    heard->setCurrentValue(nonsense);
    EXPECT_EQ(field.timeOfDay(), (TimeOfDay{7, 30})) << nonsense;
  }
  field.setEnabled(false);
  heard->setCurrentValue(0);
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{7, 30}));
}

TEST_F(TimeFieldTest, ReturnChoosesNothingNew) {
  focus();
  key(Qt::Key_Return);
  EXPECT_TRUE(chosen.empty());
  type("07");
  chosen.clear();
  key(Qt::Key_Return);
  EXPECT_TRUE(chosen.empty());
}

// A day without the time from 2:00 to 2:59.
class JumpingTimeFieldTest : public TimeFieldTest {
 protected:
  JumpingTimeFieldTest() {
    field.setTodaysClock([](TimeOfDay time) { return time.hour == 2 ? TimeOfDay{3, 0} : time; });
    // As the bindings do: shows the time that was stored.
    QObject::connect(&field, &TimeField::chosen,
                     [this](TimeOfDay time) { field.setTimeOfDay(time); });
  }
  void select(QDateTimeEdit::Section part) { field.setSelectedSection(part); }
};

TEST_F(JumpingTimeFieldTest, HoursAreSteppedPastTheJump) {
  field.setTimeOfDay({3, 30});
  focus();
  key(Qt::Key_Down);
  EXPECT_EQ(chosen, (std::vector<TimeOfDay>{{1, 30}}));
  key(Qt::Key_Up);
  EXPECT_EQ(chosen.back(), (TimeOfDay{3, 30}));
  field.setTimeOfDay({12, 30});
  key(Qt::Key_PageDown);
  EXPECT_EQ(chosen.back(), (TimeOfDay{1, 30}));
}

TEST_F(JumpingTimeFieldTest, TheHalfOfTheDayLeadsToTheTimeAfterTheJump) {
  field.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
  field.setTimeOfDay({14, 30});
  focus();
  select(QDateTimeEdit::AmPmSection);
  key(Qt::Key_Down);
  EXPECT_EQ(chosen, (std::vector<TimeOfDay>{{3, 0}}));
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{3, 0}));
}

TEST_F(JumpingTimeFieldTest, ATypedTimeIsShownUntilTheTypingIsOver) {
  focus();
  type("0230");
  EXPECT_EQ(chosen.back(), (TimeOfDay{3, 0}));
  EXPECT_EQ(field.text(), QStringLiteral("02:30"));
  key(Qt::Key_Return);
  EXPECT_EQ(field.text(), QStringLiteral("03:00"));
  EXPECT_EQ(chosen.back(), (TimeOfDay{3, 0}));
}

TEST_F(JumpingTimeFieldTest, LeavingAndHidingEndTheTyping) {
  focus();
  type("0230");
  field.clearFocus();
  EXPECT_EQ(field.text(), QStringLiteral("03:00"));
  field.setTimeOfDay({22, 0});
  focus();
  type("0230");
  field.hide();
  EXPECT_EQ(field.text(), QStringLiteral("03:00"));
}

TEST_F(JumpingTimeFieldTest, StepsContinueFromTheTypedTime) {
  focus();
  type("0230");
  select(QDateTimeEdit::HourSection);
  key(Qt::Key_Down);
  EXPECT_EQ(chosen.back(), (TimeOfDay{1, 30}));
  type("0230");
  select(QDateTimeEdit::MinuteSection);
  key(Qt::Key_Up);
  EXPECT_EQ(field.timeOfDay(), (TimeOfDay{3, 0}));
  EXPECT_EQ(chosen.back(), (TimeOfDay{3, 0}));
}

TEST_F(JumpingTimeFieldTest, SettingAnotherTimeReplacesWhatIsTyped) {
  focus();
  type("0230");
  field.setTimeOfDay({5, 0});
  EXPECT_EQ(field.text(), QStringLiteral("05:00"));
  key(Qt::Key_Return);
  EXPECT_EQ(field.text(), QStringLiteral("05:00"));
}

TEST_F(JumpingTimeFieldTest, ATimeSetByAScreenReaderIsAdjustedAtOnce) {
  test::spoken(&field)->editableTextInterface()->replaceText(0, 5, QStringLiteral("02:30"));
  EXPECT_EQ(chosen, (std::vector<TimeOfDay>{{3, 0}}));
  EXPECT_EQ(field.text(), QStringLiteral("03:00"));
}

TEST_F(TimeFieldTest, IsWideEnoughForEveryTime) {
  field.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
  const int width = field.sizeHint().width();
  field.setTimeOfDay({10, 0});
  EXPECT_EQ(field.sizeHint().width(), width) << "the column stays in line";
  EXPECT_GE(width, QFontMetrics(field.font()).horizontalAdvance(field.text()) + 36);
}

}  // namespace
}  // namespace tollbeam
