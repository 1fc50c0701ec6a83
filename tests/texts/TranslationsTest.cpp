#include "texts/Translations.h"

#include <gtest/gtest.h>

#include <QLocale>

#include "texts/Translated.h"

namespace tollbeam {
namespace {

class TranslationsTest : public testing::Test {
 protected:
  ~TranslationsTest() override { QLocale::setDefault(QLocale::c()); }

  const QString folder = QStringLiteral(TOLLBEAM_TRANSLATIONS);
};

TEST_F(TranslationsTest, SpeakTheUsersLanguage) {
  QLocale::setDefault(QLocale(QStringLiteral("de_AT")));
  const Translations german(folder);
  EXPECT_EQ(translatedUtf8("Fully charged"), "Vollständig geladen");
  EXPECT_EQ(translatedUtf8({"On battery, %1 h %2 min left", {"3", "47"}}),
            "Akkubetrieb, noch 3 Std. 47 Min.");
  EXPECT_EQ(
      translatedUtf8({"The history could not be saved to “%1”.", {"/media/disk 2/”my“ 40%1.csv"}}),
      "Der Verlauf konnte nicht unter „/media/disk 2/”my“ 40%1.csv“ gespeichert werden.");
}

TEST_F(TranslationsTest, NeedNoFileForEnglish) {
  QLocale::setDefault(QLocale(QStringLiteral("en_GB")));
  const Translations english(folder);
  EXPECT_EQ(translatedUtf8("Fully charged"), "Fully charged");
}

TEST_F(TranslationsTest, FallBackToEnglish) {
  QLocale::setDefault(QLocale(QStringLiteral("is_IS")));
  const Translations none(folder);
  EXPECT_EQ(translatedUtf8("Fully charged"), "Fully charged");
}

TEST_F(TranslationsTest, EndWithTheirOwner) {
  QLocale::setDefault(QLocale(QStringLiteral("de_DE")));
  { const Translations german(folder); }
  EXPECT_EQ(translatedUtf8("Fully charged"), "Fully charged");
}

}  // namespace
}  // namespace tollbeam
