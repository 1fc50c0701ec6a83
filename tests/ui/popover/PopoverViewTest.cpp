#include "ui/popover/PopoverView.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QKeyEvent>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <array>
#include <cstdlib>

#include "recorded/RecordedPlatform.h"
#include "support/Histories.h"
#include "support/ModelPorts.h"
#include "support/WaitFor.h"
#include "texts/LocaleFormats.h"
#include "ui/controls/Bar.h"

namespace tollbeam {
namespace {

constexpr Date kStart{1'763'648'400};

class PopoverViewTest : public testing::Test {
 protected:
  PopoverViewTest() { battery(64); }

  void battery(int percent, Dictionary more = {}) {
    more.insert_or_assign("Type", "InternalBattery");
    more.insert_or_assign("Current Capacity", percent);
    more.insert_or_assign("Max Capacity", 100);
    platform.powerSources.table = List{std::move(more)};
  }
  void plugIn(int percent, bool charging = true) {
    battery(percent, {{"Power Source State", "AC Power"}, {"Is Charging", charging}});
  }

  void build() {
    model.emplace(test::modelPorts(platform));
    model->start();
    view = std::make_unique<PopoverView>(*model, platform.clock, platform.calendar, style,
                                         [this] { ++settingsOpened; });
  }
  void open() {
    if (!view) build();
    view->refresh();
    view->resize(view->sizeHint());
    view->show();
  }
  void publish() { model->refresh(AppModel::Reason::event); }

  // The visible texts from top to bottom.
  QStringList texts() {
    QList<QWidget*> parts;
    for (auto* part : view->findChildren<QWidget*>()) {
      const bool speaks = qobject_cast<QLabel*>(part) || qobject_cast<QAbstractButton*>(part);
      if (speaks && part->isVisible()) parts << part;
    }
    // Texts whose centres are about level belong to one line, which is read from left to right.
    // The heights of texts, and so their tops, depend on the font.
    std::stable_sort(parts.begin(), parts.end(), [this](QWidget* a, QWidget* b) {
      const QPoint one = a->mapTo(view.get(), a->rect().center());
      const QPoint other = b->mapTo(view.get(), b->rect().center());
      constexpr int kOneLine = 3;
      return std::abs(one.y() - other.y()) > kOneLine ? one.y() < other.y() : one.x() < other.x();
    });
    QStringList result;
    for (auto* part : parts) {
      auto* button = qobject_cast<QAbstractButton*>(part);
      result << (button ? button->text() : qobject_cast<QLabel*>(part)->text());
    }
    return result;
  }
  bool says(const char* text) { return texts().contains(QString::fromUtf8(text)); }
  bool saysAnything(const char* part) { return !texts().filter(QString::fromUtf8(part)).isEmpty(); }
  QAbstractButton* button(const char* text) {
    for (auto* candidate : view->findChildren<QAbstractButton*>()) {
      if (candidate->text() == QString::fromUtf8(text)) return candidate;
    }
    return nullptr;
  }
  template <typename T>
  T* part() {
    return view->findChild<T*>();
  }
  QWidget* cycles() { return part<Bar>()->parentWidget(); }
  QWidget* details() { return view->findChildren<Row*>().last()->parentWidget(); }
  static QString name(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
  }

  RecordedPlatform platform{kStart};
  Style style{platform.appearance};
  std::optional<AppModel> model;
  std::unique_ptr<PopoverView> view;
  int settingsOpened = 0;
};

TEST_F(PopoverViewTest, ShowsTheBatteryFromTopToBottom) {
  battery(82,
          {{"Power Source State", "AC Power"}, {"Is Charging", true}, {"Time to Full Charge", 41}});
  platform.powerSources.properties = Dictionary{{"CycleCount", 742},
                                                {"DesignCapacity", 5000},
                                                {"AppleRawMaxCapacity", 4300},
                                                {"Temperature", 3480},
                                                {"Voltage", 12000},
                                                {"Amperage", 2383},
                                                {"AdapterDetails", Dictionary{{"Watts", 65}}}};
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 2700);
  open();
  const QString until = QString::fromUtf8("Alerts snoozed until ") + timeText({15, 5}, QLocale());
  EXPECT_EQ(
      texts().join(u'\n').toStdString(),
      "Charging, 41 min to full\nPlugged in for 1 min\n" + until.toStdString() +
          "\nCancel\nCycle count: 742 of 1000\nBattery health: 86% · Fair\nTemperature: 34.8 °C\n"
          "Power in: 28.6 W\nAdapter: 65 W\n24 hours\n7 days\n"
          "Collecting history… a graph appears after a few minutes.\nDaily summary\n"
          "Tollbeam can only remind you. A Mac app cannot stop the charger.\n"
          "Settings\nQuit");
}

TEST_F(PopoverViewTest, WithoutABatteryShowsOnlyThatNoteAndButtons) {
  platform.powerSources.table.reset();
  open();
  EXPECT_EQ(texts().join(u'\n').toStdString(),
            "No battery found\nThis Mac does not report a battery, so Tollbeam stays quiet.\n"
            "Tollbeam can only remind you. A Mac app cannot stop the charger.\nSettings\nQuit");
  EXPECT_FALSE(part<RingView>()->isVisible());
  EXPECT_FALSE(part<HistoryChart>()->isVisible());
}

TEST_F(PopoverViewTest, FollowsABatteryThatComesAndGoes) {
  open();
  const int high = view->sizeHint().height();
  platform.powerSources.table.reset();
  publish();
  EXPECT_TRUE(says("No battery found"));
  EXPECT_FALSE(says("24 hours"));
  EXPECT_LT(view->sizeHint().height(), high);
  battery(64);
  publish();
  EXPECT_FALSE(says("No battery found"));
  EXPECT_EQ(view->sizeHint().height(), high);
}

TEST_F(PopoverViewTest, HidesUnknownFigures) {
  open();
  EXPECT_EQ(texts().join(u'\n').toStdString(),
            "On battery, estimating time left…\n24 hours\n7 days\n"
            "Collecting history… a graph appears after a few minutes.\nDaily summary\n"
            "Tollbeam can only remind you. A Mac app cannot stop the charger.\nSettings\nQuit");
}

TEST_F(PopoverViewTest, ClampsTheBarButShowsTheCount) {
  platform.powerSources.properties = Dictionary{{"CycleCount", 1500}};
  open();
  EXPECT_TRUE(says("Cycle count: 1500 of 1000"));
  EXPECT_EQ(part<Bar>()->value(), 1000);
  EXPECT_EQ(part<Bar>()->maximum(), 1000);
  EXPECT_EQ(part<Bar>()->tint(), Tint::red);
  platform.powerSources.properties = Dictionary{{"CycleCount", 700}};
  publish();
  EXPECT_EQ(part<Bar>()->tint(), Tint::accent);
  EXPECT_EQ(part<Bar>()->value(), 700);
}

TEST_F(PopoverViewTest, KeepsCountingTheMinutesOnTheCharger) {
  plugIn(50);
  open();
  EXPECT_TRUE(says("Plugged in for 1 min"));
  platform.mainQueue.advance(600);
  EXPECT_TRUE(says("Plugged in for 10 min"));
  battery(50);
  publish();
  EXPECT_FALSE(saysAnything("Plugged in for"));
}

TEST_F(PopoverViewTest, CountsTheMinutesWhenItOpensBetweenRefreshes) {
  plugIn(50);
  build();
  platform.clock.set(kStart + 150);
  open();
  EXPECT_TRUE(says("Plugged in for 2 min"));
}

TEST_F(PopoverViewTest, EndsTheSnoozeAtOnce) {
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 2700);
  open();
  ASSERT_TRUE(saysAnything("Alerts snoozed until "));
  button("Cancel")->click();
  EXPECT_FALSE(saysAnything("Alerts snoozed until "));
  EXPECT_FALSE(says("Cancel"));
  EXPECT_FALSE(Prefs::snoozeUntil(platform.userDefaults, platform.clock.now()));
  EXPECT_FALSE(model->snoozeUntil());
}

TEST_F(PopoverViewTest, ShowsAnExpiredSnoozeUntilTheModelClearsIt) {
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 60);
  build();
  platform.clock.set(kStart + 3600);
  open();
  EXPECT_TRUE(saysAnything("Alerts snoozed until "));
  publish();
  EXPECT_FALSE(saysAnything("Alerts snoozed until "));
}

TEST_F(PopoverViewTest, ShowsASnoozeThatBeginsWhileItIsOpen) {
  open();
  const int high = view->sizeHint().height();
  model->snooze();
  EXPECT_TRUE(saysAnything("Alerts snoozed until "));
  EXPECT_GE(view->sizeHint().height(), high);
}

TEST_F(PopoverViewTest, StartsWithADayAndKeepsTheUsersChoice) {
  test::store(test::samplesAlong({{{-100, 20}, {0, 80}}}, kStart), platform.fileManager);
  open();
  auto* chart = part<HistoryChart>();
  ASSERT_FALSE(chart->picture().points().empty());
  const double oneDay = kStart - chart->picture().points().front().date;
  EXPECT_LE(oneDay, 86400);
  EXPECT_TRUE(button("24 hours")->isChecked());
  button("7 days")->click();
  EXPECT_GT(kStart - chart->picture().points().front().date, 86400);
  view->hide();
  open();
  EXPECT_TRUE(button("7 days")->isChecked());
  EXPECT_GT(kStart - chart->picture().points().front().date, 86400);
}

TEST_F(PopoverViewTest, OpensTheSettings) {
  open();
  button("Settings")->click();
  EXPECT_EQ(settingsOpened, 1);
}

TEST_F(PopoverViewTest, QuitsTheProgram) {
  open();
  bool left = false;
  QTimer::singleShot(0, qApp, [&] { button("Quit")->click(); });
  QTimer giveUp;
  giveUp.setSingleShot(true);
  QObject::connect(&giveUp, &QTimer::timeout, qApp, [&] {
    left = true;
    QCoreApplication::exit(1);
  });
  giveUp.start(60'000);
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_FALSE(left) << "the button did not end the program";
}

TEST_F(PopoverViewTest, DoesNotFollowTheModelWhileHidden) {
  build();
  const auto state = [this] { return part<RingView>()->value(); };
  ASSERT_EQ(state(), 64);
  battery(40);
  publish();
  EXPECT_EQ(state(), 64) << "refreshed while hidden";
  open();
  EXPECT_EQ(state(), 40);
  view->hide();
  battery(30);
  publish();
  EXPECT_EQ(state(), 40);
}

TEST_F(PopoverViewTest, RefreshesWhenItIsShownStale) {
  build();
  battery(40);
  publish();
  view->show();
  EXPECT_EQ(part<RingView>()->value(), 40);
}

TEST_F(PopoverViewTest, TabReachesTheControlsInOrder) {
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 2700);
  open();
  view->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(view.get(), test::kPatience));
  view->setFocus();
  QStringList order;
  for (int i = 0; i < 6; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    auto* focused = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    ASSERT_NE(focused, nullptr);
    order << focused->text();
  }
  EXPECT_EQ(order.join(u',').toStdString(), "Cancel,24 hours,Daily summary,Settings,Quit,Cancel");
}

TEST_F(PopoverViewTest, ArrowKeysChooseTheRange) {
  open();
  view->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(view.get(), test::kPatience));
  button("24 hours")->setFocus(Qt::TabFocusReason);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_TRUE(button("7 days")->isChecked());
  EXPECT_EQ(QApplication::focusWidget(), button("7 days"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
  EXPECT_TRUE(button("24 hours")->isChecked());
}

TEST_F(PopoverViewTest, DescribesItselfToScreenReaders) {
  platform.powerSources.properties =
      Dictionary{{"CycleCount", 212}, {"DesignCapacity", 5000}, {"AppleRawMaxCapacity", 4650}};
  open();
  auto* ring = QAccessible::queryAccessibleInterface(part<RingView>());
  EXPECT_EQ(ring->role(), QAccessible::ProgressBar);
  EXPECT_EQ(ring->text(QAccessible::Name), u"Charge, 64%");
  ASSERT_NE(ring->valueInterface(), nullptr);
  EXPECT_EQ(ring->valueInterface()->currentValue().toInt(), 64);
  EXPECT_EQ(ring->valueInterface()->maximumValue().toInt(), 100);

  auto* bar = QAccessible::queryAccessibleInterface(part<Bar>());
  EXPECT_EQ(bar->role(), QAccessible::ProgressBar);
  EXPECT_EQ(bar->text(QAccessible::Name), u"Cycle count");
  EXPECT_EQ(bar->valueInterface()->currentValue().toInt(), 212);

  const auto rows = details()->findChildren<Row*>();
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(name(rows[0]).toStdString(), "Battery health: 93% · Good");
  EXPECT_EQ(name(view.get()).toStdString(), "Charge, 64%. On battery, estimating time left…");
}

TEST_F(PopoverViewTest, SetsAccessibleTextsOnlyWhenTheyChange) {
  test::store(test::samplesAlong({{{-2, 64}, {0, 64}}}, kStart), platform.fileManager);
  open();
  const auto* ring = part<RingView>();
  const auto* chart = part<HistoryChart>();
  const auto told = [&] {
    return std::array{view->accessibleName(), ring->accessibleName(),
                      chart->accessibleDescription()};
  };
  // Qt notifies screen readers whenever a text is set. A text that was set again is an equal string
  // with other data.
  const auto timesSet = [&](const auto& before) {
    int times = 0;
    const auto now = told();
    for (std::size_t i = 0; i < now.size(); ++i) {
      if (now[i].constData() != before[i].constData()) ++times;
    }
    return times;
  };
  auto before = told();
  for (const QString& text : before) ASSERT_FALSE(text.isEmpty());
  platform.mainQueue.advance(60);
  EXPECT_EQ(timesSet(before), 0);
  battery(63);
  platform.mainQueue.advance(60);
  EXPECT_EQ(timesSet(before), 3);
  platform.powerSources.table.reset();
  publish();
  before = told();
  platform.mainQueue.advance(60);
  EXPECT_EQ(timesSet(before), 0) << "without a battery";
}

TEST_F(PopoverViewTest, EveryControlHasItsRoleAndName) {
  open();
  const auto role = [this](const char* text) {
    return QAccessible::queryAccessibleInterface(button(text))->role();
  };
  EXPECT_EQ(role("Cancel"), QAccessible::Button);
  EXPECT_EQ(role("24 hours"), QAccessible::RadioButton);
  EXPECT_EQ(role("Settings"), QAccessible::Button);
  EXPECT_EQ(role("Quit"), QAccessible::Button);
  for (const char* text : {"Cancel", "24 hours", "7 days", "Settings", "Quit"}) {
    EXPECT_EQ(name(button(text)), QString::fromUtf8(text));
  }
}

TEST_F(PopoverViewTest, HasItsWidthAndSizes) {
  open();
  EXPECT_EQ(view->sizeHint().width(), style.px(340));
  EXPECT_EQ(part<HistoryChart>()->height(), style.px(110));
  EXPECT_EQ(part<HistoryChart>()->width(), style.px(340) - 2 * style.px(16));
  EXPECT_EQ(part<RingView>()->size(), QSize(style.px(104), style.px(104)));
}

class PopoverViewSpacingTest : public PopoverViewTest, public testing::WithParamInterface<int> {
 protected:
  PopoverViewSpacingTest() {
    QFont font(before);
    font.setPixelSize(GetParam());
    QApplication::setFont(font);
  }
  ~PopoverViewSpacingTest() override { QApplication::setFont(before); }

  // The visible part: a disclosure without its clickable edge above and below the text.
  QRect placeOf(QWidget* part) {
    const QRect place(part->mapTo(view.get(), QPoint()), part->size());
    const int beyond = qobject_cast<Disclosure*>(part) ? style.px(Disclosure::kReach) : 0;
    return place.adjusted(0, beyond, 0, -beyond);
  }
  // The distances above, between and below the parts, from top to bottom.
  std::vector<int> distances(const std::vector<QWidget*>& parts) {
    std::vector<int> result;
    int bottom = 0;
    for (QWidget* part : parts) {
      EXPECT_TRUE(part && part->isVisible()) << result.size();
      if (!part) return {};
      result.push_back(placeOf(part).top() - bottom);
      bottom = placeOf(part).bottom() + 1;
    }
    result.push_back(view->height() - bottom);
    return result;
  }
  std::vector<int> scaled(std::vector<double> measures) {
    std::vector<int> result;
    for (const double measure : measures) result.push_back(style.px(measure));
    return result;
  }
  Text* text(const char* words) {
    for (auto* each : view->findChildren<Text*>()) {
      if (each->text() == QString::fromUtf8(words)) return each;
    }
    return nullptr;
  }
  Text* note() { return text("Tollbeam can only remind you. A Mac app cannot stop the charger."); }

  const QFont before = QApplication::font();
};

INSTANTIATE_TEST_SUITE_P(Fonts, PopoverViewSpacingTest, testing::Values(14, 22));

TEST_P(PopoverViewSpacingTest, SeparatesTheBlocks) {
  plugIn(82);
  platform.powerSources.properties =
      Dictionary{{"CycleCount", 742}, {"DesignCapacity", 5000}, {"AppleRawMaxCapacity", 4300}};
  open();
  EXPECT_EQ(
      distances({part<Header>(), cycles(), details(), part<SegmentedPicker>(), part<HistoryChart>(),
                 part<Disclosure>(), part<Divider>(), note(), button("Quit")}),
      scaled({16, 16, 16, 16, 16, 16, 14, 14, 14, 16}));
  EXPECT_EQ(placeOf(button("Settings")).top(), placeOf(button("Quit")).top());
  EXPECT_EQ(placeOf(part<Header>()).left(), style.px(16));
  EXPECT_EQ(placeOf(button("Quit")).right() + 1, view->width() - style.px(16));
}

TEST_P(PopoverViewSpacingTest, HasNoExtraDistanceForUnknownFigures) {
  open();
  EXPECT_EQ(distances({part<Header>(), part<SegmentedPicker>(), part<HistoryChart>(),
                       part<Disclosure>(), part<Divider>(), note(), button("Quit")}),
            scaled({16, 16, 16, 16, 14, 14, 14, 16}));
}

TEST_P(PopoverViewSpacingTest, SeparatesTheLinesOfABlock) {
  plugIn(82);
  platform.powerSources.properties = Dictionary{{"CycleCount", 742},
                                                {"DesignCapacity", 5000},
                                                {"AppleRawMaxCapacity", 4300},
                                                {"Temperature", 3480}};
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 2700);
  open();
  const auto inside = [this](const std::vector<QWidget*>& parts) {
    auto result = distances(parts);
    return std::vector(result.begin() + 1, result.end() - 1);
  };
  EXPECT_EQ(inside({text("Charging, estimating time to full…"), text("Plugged in for 1 min"),
                    part<SnoozeBanner>()}),
            scaled({4, 4}));
  EXPECT_EQ(inside({cycles()->findChild<Row*>(), cycles()->findChild<Bar*>()}), scaled({4}));
  const auto rows = details()->findChildren<Row*>();
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(inside({rows[0], rows[1]}), scaled({6}));
  part<Disclosure>()->click();
  open();
  EXPECT_EQ(inside({part<Disclosure>(), part<SummaryTable>(), part<Divider>()}), scaled({6, 14}));
}

TEST_P(PopoverViewSpacingTest, SeparatesTheTextsWithoutABattery) {
  platform.powerSources.table.reset();
  open();
  // The symbol fills 36 of the picture's 48 pixels; its empty edges do not count as distance.
  auto* picture = part<NoBattery>()->findChildren<QWidget*>().constFirst();
  const int empty = (style.px(48) - style.px(36)) / 2;
  EXPECT_EQ(picture->height(), style.px(48));
  auto expected = scaled({16, 8, 8, 14, 14, 14, 16});
  expected[0] += style.px(20) - empty;
  expected[1] -= empty;
  expected[3] += style.px(20);
  EXPECT_EQ(distances({picture, text("No battery found"),
                       text("This Mac does not report a battery, so Tollbeam stays quiet."),
                       part<Divider>(), note(), button("Quit")}),
            expected);
}

TEST_F(PopoverViewTest, GrowsWithTheFontAndCutsNothingOff) {
  const QFont before = QApplication::font();
  platform.userDefaults.set("snoozeUntil", kStart.secondsSince1970 + 2700);
  plugIn(82);
  platform.powerSources.properties = Dictionary{{"CycleCount", 212}};
  for (const int pixels : {9, 14, 18, 22}) {
    QFont font(before);
    font.setPixelSize(pixels);
    QApplication::setFont(font);
    open();
    QCoreApplication::sendPostedEvents();
    for (auto* label : view->findChildren<QLabel*>()) {
      if (!label->isVisible()) continue;
      const int needed = label->hasHeightForWidth() ? label->heightForWidth(label->width())
                                                    : label->sizeHint().height();
      EXPECT_GE(label->height(), needed) << pixels << " " << label->text().toStdString();
      EXPECT_TRUE(view->rect().contains(QRect(label->mapTo(view.get(), QPoint()), label->size())))
          << pixels << " " << label->text().toStdString();
    }
    for (auto* control : view->findChildren<QAbstractButton*>()) {
      if (!control->isVisible()) continue;
      EXPECT_GE(control->height(), 24) << control->text().toStdString();
    }
  }
  QApplication::setFont(before);
}

}  // namespace
}  // namespace tollbeam
