#include "texts/Translated.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTranslator>

#include "alerts/AlertEngine.h"
#include "battery/BatteryState.h"
#include "battery/FormatMinutes.h"
#include "preferences/Prefs.h"
#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

// A language in which every text is turned round in a way that keeps its numbers' places.
class Reversing final : public QTranslator {
 public:
  [[nodiscard]] QString translate(const char* context, const char* source, const char* /*comment*/,
                                  int /*n*/) const override {
    if (std::string_view(context) != "tollbeam::texts") return {};
    if (std::string_view(source) == "%1 h %2 min") return QStringLiteral("%2 Minuten, %1 Stunden");
    return QStringLiteral("<%1>").replace(QStringLiteral("%1"), QString::fromUtf8(source));
  }
  [[nodiscard]] bool isEmpty() const override { return false; }
};

class Translated : public testing::Test {
 protected:
  void speakAnotherLanguage() { QCoreApplication::installTranslator(&translator); }
  ~Translated() override { QCoreApplication::removeTranslator(&translator); }

  Reversing translator;
};

TEST_F(Translated, IsTheEnglishTextWithoutATranslator) {
  for (const char* text :
       {"On battery, 3 h 47 min left", "Battery is at 80%. Plug in soon.", "100% of 5%1",
        "Charging, estimating time to full…", "", "7", "Not “7”", "”“ 7", "“”", "“a” 1 “b”"}) {
    EXPECT_EQ(translatedUtf8(text), text);
  }
}

TEST_F(Translated, PutsTheNumbersWhereTheTranslationHasThem) {
  speakAnotherLanguage();
  EXPECT_EQ(translatedUtf8(formatMinutes(227)), "47 Minuten, 3 Stunden");
  EXPECT_EQ(translatedUtf8({"Battery is at %1%. Plug in soon.", {"80"}}),
            "<Battery is at 80%. Plug in soon.>");
}

TEST_F(Translated, LeavesPercentSignsAndQuotesOfAnArgumentAlone) {
  const Message error("The history could not be saved to “%1”.", {"/media/disk 2/“%1” 40%/h.csv"});
  EXPECT_TRUE(isTranslatable(error));
  speakAnotherLanguage();
  EXPECT_EQ(translatedUtf8(error),
            "<The history could not be saved to “/media/disk 2/“%1” 40%/h.csv”.>");
}

TEST_F(Translated, EveryStateOfABatteryIsTranslatable) {
  for (const bool hasBattery : {true, false}) {
    for (const bool charging : {true, false}) {
      for (const bool plugged : {true, false}) {
        for (const bool charged : {true, false}) {
          for (const std::optional<std::int64_t> minutes :
               {std::optional<std::int64_t>(), std::optional<std::int64_t>(5),
                std::optional<std::int64_t>(60), std::optional<std::int64_t>(605)}) {
            BatteryState state;
            state.hasBattery = hasBattery;
            state.percent = 55;
            state.isCharging = charging;
            state.pluggedIn = plugged;
            state.isCharged = charged;
            state.minutesToFull = state.minutesToEmpty = minutes;
            EXPECT_TRUE(isTranslatable(state.stateText())) << state.stateText();
          }
        }
      }
    }
  }
}

TEST_F(Translated, EveryDurationAndHealthIsTranslatable) {
  for (int minutes = 0; minutes < 3000; ++minutes) {
    EXPECT_TRUE(isTranslatable(formatMinutes(minutes))) << minutes;
  }
  for (int full = 1; full <= 120; ++full) {
    BatteryState state;
    state.designCapacity = 100;
    state.fullCapacity = full;
    EXPECT_TRUE(isTranslatable(state.healthLabel().value())) << full;
  }
}

TEST_F(Translated, EveryAlertIsTranslatable) {
  RecordedPlatform platform{Date{1'700'000'000}};
  platform.userDefaults.registerDefaults(Prefs::defaults());
  const Prefs prefs = Prefs::current(platform.userDefaults);
  std::set<AlertKind> seen;
  const auto meet = [&](AlertEngine& engine, const BatteryState& state, std::optional<Date> since,
                        Date now) {
    for (const auto& alert :
         engine.run(state, since, now, prefs, true, false, platform.userDefaults)) {
      seen.insert(alert.kind);
      EXPECT_TRUE(isTranslatable(alert.title)) << alert.title;
      EXPECT_TRUE(isTranslatable(alert.body)) << alert.body;
    }
  };
  BatteryState state;
  state.hasBattery = true;
  state.percent = 15;
  state.designCapacity = 100;
  state.fullCapacity = 70;
  AlertEngine engine;
  meet(engine, state, std::nullopt, Date{1'700'000'000});
  state.percent = 95;
  state.pluggedIn = state.isCharging = true;
  meet(engine, state, Date{1'600'000'000}, Date{1'700'000'060});
  EXPECT_EQ(seen.size(), 5U);
}

}  // namespace
}  // namespace tollbeam
