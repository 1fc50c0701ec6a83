#include "ui/settings/SettingsView.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <map>
#include <random>
#include <tuple>

#include "preferences/Prefs.h"
#include "recorded/RecordedPlatform.h"
#include "support/ModelPorts.h"
#include "support/SettingsPorts.h"
#include "support/Widgets.h"
#include "ui/controls/Button.h"
#include "ui/controls/Card.h"
#include "ui/controls/DropDown.h"
#include "ui/controls/DropDownList.h"

namespace tollbeam {
namespace {

constexpr Date kNow{1'763'648'400};  // 20 November 2025, 14:20

struct SwitchOf {
  const char* label;
  const char* key;
};
constexpr SwitchOf kAlertSwitches[] = {{"Charge limit", "limitEnabled"},
                                       {"Low battery", "lowEnabled"},
                                       {"Suggest Low Power Mode", "lowPowerEnabled"},
                                       {"Plugged in too long", "longEnabled"},
                                       {"Battery health below 80% (once)", "healthEnabled"}};
constexpr SwitchOf kOtherSwitches[] = {{"Repeat every 5 minutes, up to 3 times", "repeatReminder"},
                                       {"Hold alerts during quiet hours", "quietEnabled"},
                                       {"Show percentage in the menu bar", "showPercent"},
                                       {"Show time remaining", "showTime"}};

struct StepperOf {
  const char* key;
  const char* before;
  const char* after;
  Range range;
};
constexpr StepperOf kSteppers[] = {
    {"limit", "Alert when charging reaches ", "%", {50, 100}},
    {"low", "Alert on battery at ", "% or less", {5, 50}},
    {"lowPowerAt", "When on battery below ", "%", {10, 60}},
    {"longHours", "Alert after ", " h plugged in above the charge limit", {1, 48}}};

struct SoundOf {
  const char* alert;
  const char* key;
};
constexpr SoundOf kSounds[] = {{"Charge limit", "limitSound"},
                               {"Low battery", "lowSound"},
                               {"Suggest Low Power Mode", "lowPowerSound"},
                               {"Plugged in too long", "longSound"},
                               {"Battery health below 80% (once)", "healthSound"}};

class SettingsViewTest : public testing::Test {
 protected:
  void make() {
    view.emplace(model, test::settingsPorts(platform), style);
    view->resize(480, 720);
  }
  void make(const char* key, Value value) {
    platform.userDefaults.values.insert_or_assign(key, std::move(value));
    make();
  }

  Switch* toggle(const char* label) const { return test::control<Switch>(*view, label); }
  DropDown* sound(const char* alert) const {
    return test::control<DropDown>(*view, "Sound", alert);
  }
  TimeField* time(const char* label) const { return test::control<TimeField>(*view, label); }
  Button* button(const char* text) const {
    for (auto* each : view->findChildren<Button*>()) {
      if (each->text() == QString::fromUtf8(text)) return each;
    }
    return nullptr;
  }
  Stepper* stepper(const StepperOf& which) const {
    for (auto* each : view->findChildren<Stepper*>()) {
      if (each->accessibleName().startsWith(QString::fromUtf8(which.before))) return each;
    }
    return nullptr;
  }
  bool says(const char* text) const {
    for (const auto* label : view->findChildren<QLabel*>()) {
      if (label->text() == QString::fromUtf8(text)) return !label->isHidden();
    }
    return false;
  }
  QStringList texts() const {
    QStringList all;
    for (const auto* label : view->findChildren<QLabel*>()) {
      if (label->isVisibleTo(&*view)) all << label->text();
    }
    return all;
  }
  // The visible content from top to bottom: headings, the names of cards after "=", and the content
  // of each row from left to right, with buttons in brackets.
  QStringList visibleLines() const {
    // A card has the same top as its first row; its name goes before the row.
    std::vector<std::tuple<int, bool, QString>> lines;
    const auto add = [&](const QWidget* at, const QString& line) {
      lines.emplace_back(at->mapTo(&*view, QPoint()).y(), !qobject_cast<const Card*>(at), line);
    };
    for (const auto* card : view->findChildren<Card*>()) {
      add(card, QStringLiteral("= ") + card->accessibleName());
    }
    for (const auto* row : view->findChildren<FormRow*>()) {
      if (row->isVisible()) add(row, inRow(*row));
    }
    for (const auto* text : view->findChildren<Text*>()) {
      const bool isHeading = test::spoken(const_cast<Text*>(text))->role() == QAccessible::Heading;
      if (isHeading && text->isVisible()) add(text, text->text());
    }
    std::sort(lines.begin(), lines.end());
    QStringList result;
    for (const auto& line : lines) result << std::get<QString>(line);
    return result;
  }
  static QString inRow(const FormRow& row) {
    std::vector<std::pair<int, QString>> parts;
    for (const auto* part : row.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      if (!part->isVisible()) continue;
      QString what = QString::fromLatin1(part->metaObject()->className()).section(u':', -1);
      if (const auto* text = qobject_cast<const QLabel*>(part)) what = text->text();
      if (const auto* press = qobject_cast<const Button*>(part)) {
        what = QStringLiteral("[%1]").arg(press->text());
      }
      parts.emplace_back(part->x(), what);
    }
    std::sort(parts.begin(), parts.end());
    QStringList result;
    for (const auto& [left, what] : parts) result << what;
    return result.join(QStringLiteral(" | "));
  }
  void choose(const char* alert, const char* name) {
    sound(alert)->open();
    for (auto* row : sound(alert)->list()->rows()) {
      if (row->text() == QString::fromUtf8(name)) return row->click();
    }
    FAIL() << name;
  }
  Value* stored(const char* key) {
    const auto found = platform.userDefaults.values.find(key);
    return found == platform.userDefaults.values.end() ? nullptr : &found->second;
  }
  int permissionQuestions() const { return platform.notificationCenter.statusQuestions; }

  RecordedPlatform platform{kNow};
  Style style{platform.appearance};
  AppModel model{test::modelPorts(platform)};
  std::optional<SettingsView> view;
};

TEST_F(SettingsViewTest, ShowsEverythingInItsPlace) {
  make();
  view->show();
  EXPECT_EQ(visibleLines().join(u'\n').toStdString(),
            "Alerts\n"
            "= Charge limit\n"
            "Charge limit | Switch\n"
            "Alert when charging reaches 80% | Stepper\n"
            "Repeat every 5 minutes, up to 3 times | Switch\n"
            "Sound | DropDown\n"
            "= Low battery\n"
            "Low battery | Switch\n"
            "Alert on battery at 20% or less | Stepper\n"
            "Sound | DropDown\n"
            "= Suggest Low Power Mode\n"
            "Suggest Low Power Mode | Switch\n"
            "When on battery below 30% | Stepper\n"
            "Sound | DropDown\n"
            "= Plugged in too long\n"
            "Plugged in too long | Switch\n"
            "Alert after 8 h plugged in above the charge limit | Stepper\n"
            "Sound | DropDown\n"
            "= Battery health below 80% (once)\n"
            "Battery health below 80% (once) | Switch\n"
            "Sound | DropDown\n"
            "Quiet hours\n"
            "= Quiet hours\n"
            "Hold alerts during quiet hours | Switch\n"
            "From | TimeField\n"
            "Until | TimeField\n"
            "Menu bar\n"
            "= Menu bar\n"
            "Show percentage in the menu bar | Switch\n"
            "Show time remaining | Switch\n"
            "General\n"
            "= General\n"
            "Launch at Login | Switch\n"
            "[Export History as CSV…]\n"
            "[Reset History…]\n"
            "= \n"
            "macOS may also hold charging at 80% itself (Optimized Battery Charging, System "
            "Settings, Battery). Tollbeam can only remind you; it cannot control charging.");
}

TEST_F(SettingsViewTest, ShowsAnErrorBelowItsSwitchAndTheBundleNoteLastInGeneral) {
  platform.mainBundle.extension = "APP";
  platform.loginItem.failure = "Permission denied";
  make();
  toggle("Launch at Login")->toggle();
  view->show();
  const QStringList all = visibleLines();
  const QStringList general = all.mid(all.indexOf(QStringLiteral("= General")) + 1, 5)
                              << all.last().left(5);
  EXPECT_EQ(general.join(u'\n').toStdString(),
            "Launch at Login | Switch\n"
            "Could not change Launch at Login: Permission denied\n"
            "[Export History as CSV…]\n"
            "[Reset History…]\n"
            "Notifications need Tollbeam to run as an app bundle (see make_app.sh). Run from the "
            "command line, alerts cannot be delivered.\n"
            "macOS");
}

TEST_F(SettingsViewTest, ShowsTheDefaultsOfAFreshStoreAndWritesNothing) {
  make();
  view->show();
  for (const auto& each : kAlertSwitches) EXPECT_TRUE(toggle(each.label)->isChecked()) << each.key;
  EXPECT_TRUE(toggle("Repeat every 5 minutes, up to 3 times")->isChecked());
  EXPECT_FALSE(toggle("Hold alerts during quiet hours")->isChecked());
  EXPECT_TRUE(toggle("Show percentage in the menu bar")->isChecked());
  EXPECT_FALSE(toggle("Show time remaining")->isChecked());
  for (const auto& each : kSounds) {
    EXPECT_EQ(sound(each.alert)->shownText(), QStringLiteral("Default")) << each.key;
  }
  EXPECT_EQ(time("From")->timeOfDay(), (TimeOfDay{22, 0}));
  EXPECT_EQ(time("Until")->timeOfDay(), (TimeOfDay{7, 0}));
  EXPECT_TRUE(platform.userDefaults.values.empty());
  EXPECT_EQ(platform.userDefaults.writes, 0);
}

TEST_F(SettingsViewTest, EverySwitchWritesItsKeyAtOnceAndOnlyIt) {
  make();
  for (const auto* table : {kAlertSwitches, kOtherSwitches}) {
    const std::size_t count = table == kAlertSwitches ? 5 : 4;
    for (std::size_t i = 0; i < count; ++i) {
      const auto& [label, key] = table[i];
      const bool before = toggle(label)->isChecked();
      toggle("Charge limit")->setOn(true);
      platform.userDefaults.values = {{"limitEnabled", true}};
      view->show();
      const int writes = platform.userDefaults.writes;
      toggle(label)->toggle();
      EXPECT_EQ(platform.userDefaults.writes, writes + 1) << label;
      ASSERT_NE(stored(key), nullptr) << label;
      EXPECT_EQ(stored(key)->flag(), !before) << label;
    }
  }
}

TEST_F(SettingsViewTest, SwitchesShowWhatOtherProgramsStore) {
  make();
  for (const auto& [label, key] : kAlertSwitches) {
    platform.userDefaults.set(key, false);
    EXPECT_FALSE(toggle(label)->isChecked()) << label;
    platform.userDefaults.set(key, "yes");
    EXPECT_TRUE(toggle(label)->isChecked()) << label;
  }
  for (const auto& [label, key] : kOtherSwitches) {
    platform.userDefaults.set(key, 1);
    EXPECT_TRUE(toggle(label)->isChecked()) << label;
    platform.userDefaults.set(key, 0);
    EXPECT_FALSE(toggle(label)->isChecked()) << label;
  }
}

TEST_F(SettingsViewTest, SteppersShowAndChangeTheirNumber) {
  make();
  for (const StepperOf& each : kSteppers) {
    Stepper* control = stepper(each);
    ASSERT_NE(control, nullptr) << each.key;
    const std::int64_t before = platform.userDefaults.integerForKey(each.key);
    EXPECT_TRUE(control->take(Step::up));
    EXPECT_EQ(platform.userDefaults.integerForKey(each.key), before + 1);
    const std::string label = each.before + std::to_string(before + 1) + each.after;
    EXPECT_TRUE(says(label.c_str())) << label;
    EXPECT_EQ(control->accessibleName().toStdString(), label);
    EXPECT_EQ(test::spoken(control)->valueInterface()->currentValue().toLongLong(), before + 1);
    EXPECT_TRUE(control->take(Step::down));
    EXPECT_TRUE(control->take(Step::down));
    EXPECT_EQ(platform.userDefaults.integerForKey(each.key), before - 1);
  }
}

TEST_F(SettingsViewTest, AHeldStepperShowsEachStepAndStoresOnceWhenReleased) {
  make("low", 20);
  view->show();
  Stepper* control = stepper(kSteppers[1]);
  const QPoint plus(control->width() * 3 / 4, control->height() / 2);
  QTest::mousePress(control, Qt::LeftButton, {}, plus);
  EXPECT_TRUE(test::waitFor([&] { return says("Alert on battery at 23% or less"); }));
  EXPECT_EQ(platform.userDefaults.writes, 0);
  QTest::mouseRelease(control, Qt::LeftButton, {}, plus);
  EXPECT_EQ(platform.userDefaults.writes, 1);
  EXPECT_EQ(stored("low")->integer(), control->value());
}

TEST_F(SettingsViewTest, AHeldKeyStoresOnceWhenReleased) {
  make("low", 20);
  Stepper* control = stepper(kSteppers[1]);
  const auto send = [control](QEvent::Type type, bool repeated) {
    QKeyEvent event(type, Qt::Key_Up, {}, {}, repeated);
    QCoreApplication::sendEvent(control, &event);
  };
  send(QEvent::KeyPress, false);
  for (int i = 0; i < 4; ++i) {
    send(QEvent::KeyRelease, true);
    send(QEvent::KeyPress, true);
  }
  EXPECT_TRUE(says("Alert on battery at 25% or less"));
  EXPECT_EQ(platform.userDefaults.writes, 0);
  send(QEvent::KeyRelease, false);
  EXPECT_EQ(platform.userDefaults.writes, 1);
  EXPECT_EQ(stored("low")->integer(), 25);
}

TEST_F(SettingsViewTest, TheWheelStoresOnceWhenItStops) {
  make("low", 20);
  test::showActive(*view);
  Stepper* control = stepper(kSteppers[1]);
  control->setFocus();
  for (int i = 0; i < 3; ++i) test::turnWheel(*control, 120);
  EXPECT_EQ(platform.userDefaults.writes, 0);
  EXPECT_TRUE(test::waitFor([&] { return stored("low")->integer() == 23; }));
  EXPECT_EQ(platform.userDefaults.writes, 1);
}

TEST_F(SettingsViewTest, StepsAreNotLostWhenTheWindowClosesOrTheProgramQuits) {
  make("low", 20);
  view->show();
  const auto hold = [&](Stepper* control) {
    QTest::mousePress(control, Qt::LeftButton, {}, {4, control->height() / 2});
  };
  hold(stepper(kSteppers[1]));
  view->hide();
  EXPECT_EQ(stored("low")->integer(), 19);
  view->show();
  hold(stepper(kSteppers[1]));
  view.reset();
  EXPECT_EQ(stored("low")->integer(), 18);
}

TEST_F(SettingsViewTest, AHeldStepperKeepsItsNumberWhenAnotherPreferenceChanges) {
  make("low", 20);
  view->show();
  Stepper* control = stepper(kSteppers[1]);
  const QPoint minus(4, control->height() / 2);
  QTest::mousePress(control, Qt::LeftButton, {}, minus);
  platform.userDefaults.set("limit", 70);
  EXPECT_TRUE(says("Alert on battery at 19% or less"));
  QTest::mouseRelease(control, Qt::LeftButton, {}, minus);
  EXPECT_EQ(stored("low")->integer(), 19);
}

TEST_F(SettingsViewTest, SteppersAreInertAtTheEndsOfTheirRanges) {
  make();
  for (const StepperOf& each : kSteppers) {
    platform.userDefaults.set(each.key, each.range.most);
    EXPECT_FALSE(stepper(each)->take(Step::up)) << each.key;
    platform.userDefaults.set(each.key, each.range.least);
    EXPECT_FALSE(stepper(each)->take(Step::down)) << each.key;
    EXPECT_EQ(platform.userDefaults.integerForKey(each.key), each.range.least);
  }
}

TEST_F(SettingsViewTest, ANumberOutsideTheRangeIsShownUntilAStepBringsItIn) {
  make("limit", 120);
  EXPECT_TRUE(says("Alert when charging reaches 120%"));
  EXPECT_FALSE(stepper(kSteppers[0])->take(Step::up));
  EXPECT_EQ(platform.userDefaults.writes, 0);
  EXPECT_TRUE(stepper(kSteppers[0])->take(Step::down));
  EXPECT_EQ(stored("limit")->integer(), 100);
  EXPECT_TRUE(says("Alert when charging reaches 100%"));
}

TEST_F(SettingsViewTest, NumbersOf64BitsAreShown) {
  make("low", std::int64_t{-9'223'372'036'854'775'807} - 1);
  EXPECT_TRUE(says("Alert on battery at -9223372036854775808% or less"));
  platform.userDefaults.set("low", std::int64_t{9'223'372'036'854'775'807});
  EXPECT_TRUE(says("Alert on battery at 9223372036854775807% or less"));
  EXPECT_TRUE(stepper(kSteppers[1])->take(Step::down));
  EXPECT_EQ(stored("low")->integer(), 50);
}

TEST_F(SettingsViewTest, NumbersStoredInAnotherTypeAreConverted) {
  make("limit", "75");
  EXPECT_TRUE(says("Alert when charging reaches 75%"));
  platform.userDefaults.set("limit", 60.9);
  EXPECT_TRUE(says("Alert when charging reaches 60%"));
  platform.userDefaults.set("limit", true);
  EXPECT_TRUE(says("Alert when charging reaches 1%"));
  platform.userDefaults.set("limit", List{});
  EXPECT_TRUE(says("Alert when charging reaches 0%"));
}

TEST_F(SettingsViewTest, NoClickEverStoresANumberOutsideItsRange) {
  make();
  std::mt19937_64 random(20251120);
  std::uniform_int_distribution<std::int64_t> any;
  for (int i = 0; i < 400; ++i) {
    const StepperOf& each = kSteppers[static_cast<std::size_t>(any(random)) % 4];
    const std::int64_t value = i % 3 == 0 ? any(random) * (i % 2 ? 1 : -1) : any(random) % 140 - 20;
    platform.userDefaults.set(each.key, value);
    for (int click = 0; click < 5; ++click) {
      const int writes = platform.userDefaults.writes;
      Stepper* control = stepper(each);
      const int x = any(random) % 2 ? 4 : control->width() - 4;
      QTest::mouseClick(control, Qt::LeftButton, {}, {x, control->height() / 2});
      if (platform.userDefaults.writes == writes) continue;
      const std::int64_t now = platform.userDefaults.integerForKey(each.key);
      ASSERT_GE(now, each.range.least) << each.key << " from " << value;
      ASSERT_LE(now, each.range.most) << each.key << " from " << value;
    }
  }
}

TEST_F(SettingsViewTest, AnAlertThatIsOffDisablesItsRowsAndKeepsTheirValues) {
  make("limit", 77);
  toggle("Charge limit")->toggle();
  EXPECT_FALSE(stepper(kSteppers[0])->isEnabled());
  EXPECT_FALSE(toggle("Repeat every 5 minutes, up to 3 times")->isEnabled());
  EXPECT_FALSE(sound("Charge limit")->isEnabled());
  EXPECT_TRUE(toggle("Charge limit")->isEnabled());
  EXPECT_TRUE(stepper(kSteppers[1])->isEnabled());
  EXPECT_TRUE(sound("Low battery")->isEnabled());
  EXPECT_EQ(platform.userDefaults.integerForKey("limit"), 77);
  EXPECT_TRUE(platform.userDefaults.boolForKey("repeatReminder"));
  EXPECT_EQ(platform.userDefaults.stringForKey("limitSound"), "default");
  EXPECT_EQ(platform.userDefaults.values.size(), 2U);
}

TEST_F(SettingsViewTest, EveryAlertsRowsFollowItsSwitch) {
  make();
  for (std::size_t i = 0; i < 5; ++i) {
    for (const bool on : {false, true}) {
      platform.userDefaults.set(kAlertSwitches[i].key, on);
      EXPECT_EQ(sound(kAlertSwitches[i].label)->isEnabled(), on) << kAlertSwitches[i].label;
      if (i < 4) {
        EXPECT_EQ(stepper(kSteppers[i])->isEnabled(), on) << kAlertSwitches[i].label;
      }
    }
  }
}

TEST_F(SettingsViewTest, TimesFollowTheSwitchOfTheQuietHours) {
  make();
  EXPECT_FALSE(time("From")->isEnabled());
  EXPECT_FALSE(time("Until")->isEnabled());
  toggle("Hold alerts during quiet hours")->toggle();
  EXPECT_TRUE(time("From")->isEnabled());
  EXPECT_TRUE(time("Until")->isEnabled());
}

TEST_F(SettingsViewTest, TimesAreMinutesAfterMidnight) {
  make("quietEnabled", true);
  platform.userDefaults.set("quietStart", 1320);
  EXPECT_EQ(time("From")->timeOfDay(), (TimeOfDay{22, 0}));
  time("From")->setTime(QTime(7, 30));
  EXPECT_EQ(stored("quietStart")->integer(), 450);
  time("Until")->setTime(QTime(0, 0));
  EXPECT_EQ(stored("quietEnd")->integer(), 0);
}

TEST_F(SettingsViewTest, ATimeOutsideTheDayIsShownAndNotChanged) {
  make("quietEnabled", true);
  platform.userDefaults.set("quietStart", 5000);
  const int writes = platform.userDefaults.writes;
  EXPECT_EQ(time("From")->timeOfDay(), (TimeOfDay{14, 20}));
  test::showActive(*view);
  time("From")->setFocus(Qt::TabFocusReason);
  time("From")->clearFocus();
  EXPECT_EQ(platform.userDefaults.writes, writes);
  view->hide();
  platform.clock.set(kNow + 3600.0);
  view->show();
  EXPECT_EQ(time("From")->timeOfDay(), (TimeOfDay{15, 20})) << "read each time it opens";
  EXPECT_EQ(stored("quietStart")->integer(), 5000);
}

TEST_F(SettingsViewTest, SwitchingAnAlertOnRequestsPermission) {
  make();
  std::size_t asked = 0;
  for (const auto& [label, key] : kAlertSwitches) {
    toggle(label)->toggle();
    EXPECT_EQ(permissionQuestions(), asked) << "off: " << label;
    toggle(label)->toggle();
    EXPECT_EQ(permissionQuestions(), ++asked) << "on: " << label;
  }
}

TEST_F(SettingsViewTest, NothingElseRequestsPermission) {
  make();
  view->show();
  for (const auto& [label, key] : kOtherSwitches) {
    toggle(label)->toggle();
    toggle(label)->toggle();
  }
  for (const auto& [label, key] : kAlertSwitches) {
    platform.userDefaults.set(key, false);
    platform.userDefaults.set(key, true);
  }
  toggle("Launch at Login")->toggle();
  EXPECT_EQ(permissionQuestions(), 0U);
}

TEST_F(SettingsViewTest, OutsideABundleNoPermissionIsRequested) {
  platform.mainBundle.id.reset();
  make();
  toggle("Charge limit")->toggle();
  toggle("Charge limit")->toggle();
  EXPECT_EQ(permissionQuestions(), 0U);
}

TEST_F(SettingsViewTest, OutsideABundleANoteSaysSo) {
  constexpr const char* kNote =
      "Notifications need Tollbeam to run as an app bundle (see make_app.sh). Run from the command "
      "line, alerts cannot be delivered.";
  make();
  EXPECT_FALSE(says(kNote));
  platform.mainBundle.extension = "APP";
  make();
  EXPECT_TRUE(says(kNote));
}

TEST_F(SettingsViewTest, SoundsAreInOrder) {
  make();
  sound("Low battery")->open();
  QStringList offered;
  for (const auto* row : sound("Low battery")->list()->rows()) offered << row->text();
  EXPECT_EQ(offered.join(u' '),
            QStringLiteral("Default None Glass Ping Hero Submarine Funk Basso Blow Bottle Frog "
                           "Morse Pop Purr Sosumi Tink"));
}

TEST_F(SettingsViewTest, APickedSoundIsStoredAndPlayedOnce) {
  make();
  choose("Low battery", "Pop");
  EXPECT_EQ(*stored("lowSound")->text(), "Pop");
  EXPECT_EQ(platform.systemSounds.played, std::vector<std::string>{"Pop"});
  EXPECT_EQ(sound("Low battery")->shownText(), QStringLiteral("Pop"));
  choose("Low battery", "Pop");
  EXPECT_EQ(platform.systemSounds.played.size(), 1U) << "the same again";
}

TEST_F(SettingsViewTest, DefaultAndNoneAreStoredAndPlayNothing) {
  make("healthSound", "Glass");
  choose("Battery health below 80% (once)", "None");
  EXPECT_EQ(*stored("healthSound")->text(), "none");
  choose("Battery health below 80% (once)", "Default");
  EXPECT_EQ(*stored("healthSound")->text(), "default");
  EXPECT_TRUE(platform.systemSounds.played.empty());
  EXPECT_EQ(platform.systemSounds.defaultsPlayed, 0);
}

TEST_F(SettingsViewTest, EveryPickerHasItsOwnKey) {
  make();
  const char* const names[] = {"Glass", "Ping", "Hero", "Submarine", "Tink"};
  for (std::size_t i = 0; i < 5; ++i) choose(kSounds[i].alert, names[i]);
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(*stored(kSounds[i].key)->text(), names[i]);
}

TEST_F(SettingsViewTest, ASoundStoredByAnotherProgramIsShownAndNotPlayed) {
  make();
  platform.userDefaults.set("limitSound", "Submarine");
  EXPECT_EQ(sound("Charge limit")->shownText(), QStringLiteral("Submarine"));
  platform.userDefaults.set("limitSound", "Doorbell");
  EXPECT_EQ(sound("Charge limit")->shownText(), QStringLiteral("Doorbell"));
  platform.userDefaults.set("limitSound", 7);
  EXPECT_EQ(sound("Charge limit")->shownText(), QStringLiteral("Default"))
      << "the stored value is not a text";
  EXPECT_TRUE(platform.systemSounds.played.empty());
}

TEST_F(SettingsViewTest, ALongSoundNameDoesNotWidenThePage) {
  make("lowSound", std::string(200, 'x'));
  view->show();
  const auto* scroll = view->findChild<QScrollArea*>();
  EXPECT_EQ(scroll->widget()->width(), scroll->viewport()->width());
  for (auto* each : view->findChildren<QAbstractButton*>()) {
    const QRect place(each->mapTo(&*view, QPoint()), each->size());
    EXPECT_GE(place.left(), 0) << each->accessibleName().toStdString();
    EXPECT_LT(place.right(), 480) << each->accessibleName().toStdString();
  }
}

TEST_F(SettingsViewTest, LaunchAtLoginShowsTheDesktopsState) {
  platform.loginItem.current = LoginItem::Status::enabled;
  make();
  EXPECT_TRUE(toggle("Launch at Login")->isChecked());
  toggle("Launch at Login")->toggle();
  EXPECT_EQ(platform.loginItem.current, LoginItem::Status::notRegistered);
  EXPECT_FALSE(toggle("Launch at Login")->isChecked());
  toggle("Launch at Login")->toggle();
  EXPECT_EQ(platform.loginItem.current, LoginItem::Status::enabled);
  EXPECT_TRUE(toggle("Launch at Login")->isChecked());
  EXPECT_EQ(platform.userDefaults.writes, 0) << "launch at login is not a preference";
}

TEST_F(SettingsViewTest, AFailedChangeOfLaunchAtLoginIsUndoneAndExplained) {
  platform.loginItem.failure = "Permission denied";
  make();
  toggle("Launch at Login")->toggle();
  EXPECT_FALSE(toggle("Launch at Login")->isChecked());
  EXPECT_TRUE(
      texts().contains(QStringLiteral("Could not change Launch at Login: Permission denied")));
  platform.loginItem.failure = "Disk full %1";
  toggle("Launch at Login")->toggle();
  EXPECT_TRUE(texts().contains(QStringLiteral("Could not change Launch at Login: Disk full %1")));
  platform.loginItem.failure.reset();
  toggle("Launch at Login")->toggle();
  EXPECT_TRUE(toggle("Launch at Login")->isChecked());
  EXPECT_TRUE(texts().filter(QStringLiteral("Could not")).isEmpty());
}

TEST_F(SettingsViewTest, ALoginItemThatAwaitsApprovalIsOff) {
  platform.loginItem.current = LoginItem::Status::requiresApproval;
  make();
  EXPECT_FALSE(toggle("Launch at Login")->isChecked());
}

TEST_F(SettingsViewTest, LaunchAtLoginIsReadEachTimeTheWindowOpens) {
  make();
  view->show();
  view->hide();
  platform.loginItem.current = LoginItem::Status::enabled;
  view->show();
  EXPECT_TRUE(toggle("Launch at Login")->isChecked());
}

TEST_F(SettingsViewTest, ExportAsksForAFile) {
  make();
  button("Export History as CSV…")->click();
  ASSERT_EQ(platform.dialogs.savePanels.size(), 1U);
  EXPECT_EQ(platform.dialogs.savePanels[0].suggestedName, "Tollbeam-history.csv");
}

class ResetTest : public SettingsViewTest {
 protected:
  ResetTest() {
    BatteryState state;
    state.hasBattery = true;
    state.percent = 60;
    model.history().record(state, kNow, true);
    make();
    button("Reset History…")->click();
  }
  void answer(std::optional<std::size_t> choice) { platform.dialogs.alertAnswers.back()(choice); }
  bool isEmpty() { return model.history().csv().find('\n') == model.history().csv().rfind('\n'); }
};

TEST_F(ResetTest, AsksFirst) {
  ASSERT_EQ(platform.dialogs.alerts.size(), 1U);
  const AlertDialog& question = platform.dialogs.alerts[0];
  EXPECT_EQ(question.message, "Reset history?");
  EXPECT_EQ(question.informativeText, "This deletes all saved battery samples used for the chart.");
  EXPECT_EQ(question.buttons, (std::vector<Message>{"Reset", "Cancel"}));
  EXPECT_TRUE(question.destructive);
  EXPECT_FALSE(isEmpty());
}

TEST_F(ResetTest, CancelLeavesTheHistory) {
  answer(1);
  EXPECT_FALSE(isEmpty());
}

TEST_F(ResetTest, EscapeLeavesTheHistory) {
  answer(std::nullopt);
  EXPECT_FALSE(isEmpty());
}

TEST_F(ResetTest, ResetDeletesIt) {
  answer(0);
  EXPECT_TRUE(isEmpty());
}

TEST_F(ResetTest, AsksOnlyOnceUntilItIsAnswered) {
  button("Reset History…")->click();
  EXPECT_EQ(platform.dialogs.alerts.size(), 1U);
  answer(1);
  button("Reset History…")->click();
  EXPECT_EQ(platform.dialogs.alerts.size(), 2U);
}

TEST_F(ResetTest, AnAnswerAfterTheViewIsDestroyedDoesNothing) {
  view.reset();
  answer(0);
  EXPECT_FALSE(isEmpty());
}

TEST_F(SettingsViewTest, HasHeadingsAndGroupsForScreenReaders) {
  make();
  QStringList headings;
  QStringList groups;
  for (auto* widget : view->findChildren<QWidget*>()) {
    const auto* accessible = test::spoken(widget);
    if (accessible->role() == QAccessible::Heading) headings << accessible->text(QAccessible::Name);
    if (accessible->role() == QAccessible::Grouping) groups << accessible->text(QAccessible::Name);
  }
  EXPECT_EQ(headings.join(u'|'), QStringLiteral("Alerts|Quiet hours|Menu bar|General"));
  EXPECT_EQ(groups.join(u'|'),
            QStringLiteral("Charge limit|Low battery|Suggest Low Power Mode|Plugged in too long|"
                           "Battery health below 80% (once)|Quiet hours|Menu bar|General|"));
}

TEST_F(SettingsViewTest, EveryControlHasANameAndTabReachesItInOrder) {
  make("quietEnabled", true);
  test::showActive(*view);
  QStringList order;
  toggle("Charge limit")->setFocus(Qt::TabFocusReason);
  const QWidget* first = QApplication::focusWidget();
  do {
    const QWidget* now = QApplication::focusWidget();
    const QString name = test::spoken(const_cast<QWidget*>(now))->text(QAccessible::Name);
    EXPECT_FALSE(name.isEmpty()) << now->metaObject()->className();
    if (order.isEmpty() || order.last() != name) order << name;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  } while (QApplication::focusWidget() != first && order.size() < 100);
  EXPECT_EQ(order.size(), 23) << order.join(u'|').toStdString();
  EXPECT_EQ(order.mid(0, 5).join(u'|'),
            QStringLiteral("Charge limit|Alert when charging reaches 80%|Repeat every 5 minutes, "
                           "up to 3 times|Sound|Low battery"));
  EXPECT_EQ(order.last(), QString::fromUtf8("Reset History…"));
}

TEST_F(SettingsViewTest, TheFocusStartsOnThePageBeforeTheFirstControl) {
  make();
  test::showActive(*view);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_EQ(platform.userDefaults.writes, 0);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
  EXPECT_GT(view->findChild<QScrollArea*>()->verticalScrollBar()->value(), 0);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_TRUE(toggle("Charge limit")->hasFocus());
  EXPECT_EQ(view->findChild<QScrollArea*>()->verticalScrollBar()->value(), 0);
}

TEST_F(SettingsViewTest, TheFocusStaysWhenTheDesktopShowsTheWindowAgain) {
  make();
  test::showActive(*view);
  toggle("Low battery")->setFocus(Qt::TabFocusReason);
  QShowEvent again;
  QSpontaneKeyEvent::setSpontaneous(&again);
  qApp->notify(&*view, &again);
  EXPECT_TRUE(toggle("Low battery")->hasFocus());
}

TEST_F(SettingsViewTest, TheFocusedControlIsScrolledIntoView) {
  make();
  test::showActive(*view);
  toggle("Charge limit")->setFocus(Qt::TabFocusReason);
  for (int i = 0; i < 20; ++i) {
    const QWidget* control = QApplication::focusWidget();
    const QPoint at = control->mapTo(&*view, control->rect().center());
    EXPECT_TRUE(view->rect().contains(at)) << control->accessibleName().toStdString();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
}

TEST_F(SettingsViewTest, DoesNotObserveThePreferencesAfterItIsDestroyed) {
  make();
  view.reset();
  platform.userDefaults.set("limit", 66);
}

}  // namespace
}  // namespace tollbeam
