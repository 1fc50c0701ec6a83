#include "texts/LocaleFormats.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

constexpr CalendarDay kMonday{2025, 11, 3};

QLocale locale(const char* name) { return QLocale(QString::fromLatin1(name)); }

// Locales differ between versions of the locale data in which kind of space they take.
std::string plain(QString text) {
  for (const char16_t space : {u'\u00A0', u'\u202F'}) text.replace(space, u' ');
  return text.toStdString();
}

std::string hour(int hour, const char* name) { return plain(hourText({hour, 0}, locale(name))); }
std::string day(const char* name) { return plain(weekdayAndDayText(kMonday, locale(name))); }

TEST(LocaleFormats, WriteAFullHourShort) {
  EXPECT_EQ(hour(18, "en_GB"), "18:00");
  EXPECT_EQ(hour(0, "en_GB"), "00:00");
  EXPECT_EQ(hour(18, "en_US"), "6 PM");
  EXPECT_EQ(hour(0, "en_US"), "12 AM");
  EXPECT_EQ(hour(6, "fi_FI"), "6.00");
  EXPECT_EQ(hour(18, "ko_KR"), "오후 6");
  EXPECT_EQ(hour(18, "fr_CA"), "18 h 00");
  EXPECT_EQ(hour(18, "ar_EG"), "٦ م");
}

TEST(LocaleFormats, KeepTheMinutesOfATimeThatIsNotFull) {
  EXPECT_EQ(plain(hourText({0, 30}, locale("en_US"))), "12:30 AM");
  EXPECT_EQ(plain(timeText({14, 20}, locale("en_US"))), "2:20 PM");
  EXPECT_EQ(plain(timeText({14, 20}, locale("de_DE"))), "14:20");
}

TEST(LocaleFormats, HaveNoSeconds) {
  EXPECT_EQ(timeText({14, 20}, QLocale::c()).toStdString(), "14:20");
  EXPECT_EQ(hourText({6, 0}, QLocale::c()).toStdString(), "06:00");
}

TEST(LocaleFormats, LeaveNoFormatLetterUnfilled) {
  for (const QLocale& locale :
       QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
    const QString text = timeText({14, 20}, locale);
    EXPECT_FALSE(text.isEmpty()) << locale.name().toStdString();
    const QString words = (locale.amText() + locale.pmText()).toUpper();
    EXPECT_TRUE(!text.contains(u'B') || words.contains(u'B')) << locale.name().toStdString();
    EXPECT_FALSE(text.contains(u'\'')) << locale.name().toStdString();
  }
}

TEST(LocaleFormats, PutTheDayInTheLocalesOrder) {
  EXPECT_EQ(day("en_US"), "Mon 3");
  EXPECT_EQ(day("en_GB"), "Mon 3");
  EXPECT_EQ(day("C"), "Mon 3");
  EXPECT_EQ(day("de_DE"), "Mo. 3.");
  EXPECT_EQ(day("fr_FR"), "lun. 3");
  EXPECT_EQ(day("es_ES"), "lun 3");
  EXPECT_EQ(day("tr_TR"), "3 Pzt");
  EXPECT_EQ(day("hu_HU"), "3. (H)");
  EXPECT_EQ(day("ja_JP"), "3日 (月)");
  EXPECT_EQ(day("zh_CN"), "3日 周一");
  EXPECT_EQ(day("fa_IR"), "دوشنبه ۳");
}

TEST(LocaleFormats, NameWeekdaysInFullOrByALetter) {
  EXPECT_EQ(weekdayText(kMonday, locale("en_GB")).toStdString(), "Mon");
  EXPECT_EQ(weekdayText(kMonday, locale("en_GB"), true).toStdString(), "M");
}

}  // namespace
}  // namespace tollbeam
