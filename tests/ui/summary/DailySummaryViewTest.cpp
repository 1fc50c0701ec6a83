#include "ui/summary/DailySummaryView.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "support/Histories.h"
#include "support/ModelPorts.h"
#include "ui/controls/FocusRing.h"

namespace tollbeam {
namespace {

constexpr Date kNow{1763648400};       // Thursday, 20 November 2025, 14:20
constexpr Date kMidnight{1763596800};  // of that day

class DailySummaryViewTest : public testing::Test {
 protected:
  DailySummaryViewTest() { QLocale::setDefault(QLocale(QStringLiteral("en_GB"))); }
  ~DailySummaryViewTest() override { QLocale::setDefault(QLocale::c()); }

  /// In a window that has the size of its content, like the popover.
  void show(const std::vector<std::vector<test::Corner>>& stretches) {
    test::store(test::samplesAlong(stretches, kMidnight), platform.fileManager);
    model.emplace(test::modelPorts(platform));
    // Nested, so that a new height must pass through several layouts.
    auto* middle = new QWidget;
    auto* inner = new QVBoxLayout(middle);
    view = new DailySummaryView(*model, platform.clock, platform.calendar, style, middle);
    inner->addWidget(view);
    inner->addWidget(new QWidget);
    auto* outer = new QVBoxLayout(&window);
    outer->setSizeConstraint(QLayout::SetFixedSize);
    outer->addWidget(middle);
    window.show();
  }
  void show() { show({{{-16, 40}, {-14, 80}, {-10, 70}}, {{8, 64}, {9, 64}}}); }
  SummaryTable* table() { return view->findChild<SummaryTable*>(); }
  std::vector<std::string> days() {
    std::vector<std::string> result;
    for (const SummaryText& day : table()->days()) result.push_back(day.day.toStdString());
    return result;
  }
  bool isOpen() { return table() && table()->isVisible(); }
  void press(int key) {
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&view->title(), &down);
    QCoreApplication::sendEvent(&view->title(), &up);
  }
  QAccessibleInterface* spoken(QObject* object) {
    return QAccessible::queryAccessibleInterface(object);
  }

  RecordedPlatform platform{kNow};
  Style style{platform.appearance};
  std::optional<AppModel> model;
  DailySummaryView* view = nullptr;
  QWidget window;
};

TEST_F(DailySummaryViewTest, StartsClosedWithoutATable) {
  show();
  EXPECT_EQ(view->title().text(), QStringLiteral("Daily summary"));
  EXPECT_EQ(table(), nullptr);
  EXPECT_EQ(view->height(), style.lineHeight(Role::callout) + 2 * style.px(4));
}

TEST_F(DailySummaryViewTest, OpensAndClosesByAClick) {
  show();
  view->title().click();
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(days(), (std::vector<std::string>{"Thu 20", "Wed 19"})) << "newest first";
  view->title().click();
  EXPECT_FALSE(isOpen());
}

TEST_F(DailySummaryViewTest, OpensByTheKeyboard) {
  show();
  EXPECT_EQ(view->title().focusPolicy(), Qt::StrongFocus);
  for (const int key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    press(key);
    EXPECT_TRUE(isOpen()) << key;
    press(key);
    EXPECT_FALSE(isOpen()) << key;
  }
}

TEST_F(DailySummaryViewTest, TheWholeRowCanBeClicked) {
  show();
  EXPECT_EQ(view->title().width(), view->width());
  EXPECT_GE(view->title().height(), 24);
}

TEST_F(DailySummaryViewTest, ItsFocusRingIsNotCutOffAndMovesWithIt) {
  show();
  view->title().setFocus(Qt::TabFocusReason);
  QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
  QCoreApplication::sendEvent(&view->title(), &focus);
  auto* ring = window.findChild<FocusRing*>();
  ASSERT_NE(ring, nullptr);
  EXPECT_TRUE(ring->isVisible());
  EXPECT_TRUE(ring->parentWidget()->rect().contains(ring->geometry()));
  EXPECT_LT(ring->mapTo(&window, QPoint()).x(), view->title().mapTo(&window, QPoint()).x());
  const int before = ring->mapTo(&window, QPoint()).y();
  view->move(view->x(), view->y() + 7);
  EXPECT_EQ(ring->mapTo(&window, QPoint()).y(), before + 7);
}

TEST_F(DailySummaryViewTest, ShowsTheNumbersOfADay) {
  show();
  view->title().click();
  const SummaryText yesterday = table()->days().at(1);
  EXPECT_EQ(yesterday.range, QString::fromUtf8("40–80%"));
  EXPECT_EQ(yesterday.charging, QStringLiteral("2 h"));
  EXPECT_EQ(table()->days().at(0).charging, QString::fromUtf8("–"));
  EXPECT_EQ(table()->days().at(0).range, QString::fromUtf8("64–64%"));
}

TEST_F(DailySummaryViewTest, HasOnlyItsHeadingsWithoutAHistory) {
  show({});
  view->title().click();
  EXPECT_TRUE(table()->days().empty());
  EXPECT_EQ(table()->findChildren<SummaryRow*>().size(), 1);
}

TEST_F(DailySummaryViewTest, TheWindowResizesAtOnce) {
  show();
  const int closed = window.height();
  view->title().click();
  EXPECT_EQ(window.height(), closed + view->height() - view->title().height());
  EXPECT_GE(view->height() - view->title().height(), style.px(3 * 18 + 2));
  view->title().click();
  EXPECT_EQ(window.height(), closed);
}

TEST_F(DailySummaryViewTest, StaysOpenWhenTheWindowIsHiddenAndShown) {
  show();
  view->title().click();
  window.hide();
  window.show();
  EXPECT_TRUE(isOpen());
}

TEST_F(DailySummaryViewTest, OpensAtItsNewHeightAfterADayWhileHidden) {
  show({{{8, 64}, {9, 64}}});
  view->title().click();
  const int before = window.height();
  window.hide();
  platform.clock.set(kNow + 86400);
  platform.powerSources.table = List{
      Dictionary{{"Type", "InternalBattery"}, {"Current Capacity", 50}, {"Max Capacity", 100}}};
  model->refresh(AppModel::Reason::timer);
  EXPECT_EQ(days(), std::vector<std::string>{"Thu 20"}) << "computed while hidden";
  window.show();
  EXPECT_EQ(days(), (std::vector<std::string>{"Fri 21", "Thu 20"}));
  EXPECT_EQ(window.height(), before + view->findChild<SummaryRow*>()->height());
}

TEST_F(DailySummaryViewTest, FollowsTheHistoryWhileOpen) {
  show();
  view->title().click();
  model->resetHistory();
  EXPECT_TRUE(table()->days().empty());
}

TEST_F(DailySummaryViewTest, WidensAColumnForALongText) {
  show();
  view->title().click();
  const SummaryColumns usual = table()->columns();
  EXPECT_EQ(usual.average, style.px(38));
  EXPECT_EQ(usual.range, style.px(68));
  EXPECT_EQ(usual.charging, style.px(62));
  auto days = table()->days();
  days[0].charging = QStringLiteral("zwölf Stunden und 35 Minuten");
  table()->setDays(days);
  EXPECT_GT(table()->columns().charging, usual.charging);
  EXPECT_EQ(table()->columns().range, usual.range);
}

// Finds the first and last pixel of each of the four texts of a row.
class SummaryColumnsTest : public DailySummaryViewTest {
 protected:
  struct Ink {
    int first = -1;
    int last = -1;
  };
  // Searches the columns of pixels from `from` up to `to`.
  static Ink inkOf(SummaryRow& row, int from, int to) {
    const QImage image = row.grab().toImage();
    const QColor ground = image.pixelColor(0, 0);
    Ink ink;
    for (int x = from; x < to; ++x) {
      for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(x, y) == ground) continue;
        if (ink.first < 0) ink.first = x;
        ink.last = x;
      }
    }
    return ink;
  }
};

TEST_F(SummaryColumnsTest, AreTrailingAlignedAndTheDayIsLeadingAligned) {
  constexpr int kBearing = 3;
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    QWidget page;
    page.setLayoutDirection(direction);
    SummaryTable table(style, &page);
    table.setDays({{.day = QStringLiteral("Mon 3"),
                    .average = QStringLiteral("61%"),
                    .range = QString::fromUtf8("40–80%"),
                    .charging = QStringLiteral("2 h"),
                    .spoken = {}}});
    page.resize(308, 100);
    table.setGeometry(page.rect());
    page.show();
    const bool mirrored = direction == Qt::RightToLeft;
    for (auto* row : table.findChildren<SummaryRow*>()) {
      const int width = row->width();
      ASSERT_EQ(width, 308);
      // From the trailing edge of the row to that of the column.
      int distance = 0;
      for (const int column : {style.px(62), style.px(68), style.px(38)}) {
        const int from = mirrored ? distance : width - distance - column;
        const Ink ink = inkOf(*row, from, from + column);
        ASSERT_GE(ink.first, 0);
        const int fromEnd = mirrored ? ink.first - distance : width - distance - 1 - ink.last;
        EXPECT_LE(fromEnd, kBearing) << mirrored << " column at " << distance;
        distance += column + style.px(8);
      }
      const Ink day = mirrored ? inkOf(*row, distance, width) : inkOf(*row, 0, width - distance);
      ASSERT_GE(day.first, 0);
      EXPECT_LE(mirrored ? width - 1 - day.last : day.first, kBearing);
    }
  }
}

TEST_F(DailySummaryViewTest, IsAnExpandableButtonForScreenReaders) {
  show();
  auto* title = spoken(&view->title());
  ASSERT_NE(title, nullptr);
  EXPECT_EQ(title->role(), QAccessible::Button);
  EXPECT_EQ(title->text(QAccessible::Name), QStringLiteral("Daily summary"));
  EXPECT_TRUE(title->state().expandable);
  EXPECT_TRUE(title->state().collapsed);
  EXPECT_TRUE(title->state().checkable) << "needed for screen readers to announce changes";
  EXPECT_FALSE(title->state().checked);
  EXPECT_TRUE(title->state().focusable);
  auto* actions = title->actionInterface();
  ASSERT_NE(actions, nullptr);
  ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(isOpen());
  EXPECT_TRUE(title->state().expanded);
  EXPECT_FALSE(title->state().collapsed);
  EXPECT_TRUE(title->state().checked);
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(title->state().collapsed);
  EXPECT_FALSE(title->state().checked);
}

TEST_F(DailySummaryViewTest, EachRowIsOneSentenceForScreenReaders) {
  show();
  view->title().click();
  const auto rows = table()->findChildren<SummaryRow*>();
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(spoken(rows[0])->text(QAccessible::Name), QStringLiteral("Day, Avg, Range, Charging"));
  EXPECT_EQ(spoken(rows[1])->text(QAccessible::Name),
            QString::fromUtf8("Thu 20: average 64%, range 64–64%, no charging"));
  EXPECT_EQ(spoken(rows[1])->role(), QAccessible::StaticText);
}

TEST_F(DailySummaryViewTest, GrowsWithTheFontWhileOpen) {
  show();
  view->title().click();
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPixelSize(30);
  QApplication::setFont(large);
  EXPECT_GE(table()->columns().range, 2 * 68);
  EXPECT_GE(view->findChild<SummaryRow*>()->height(), 2 * 18);
  QApplication::setFont(before);
}

}  // namespace
}  // namespace tollbeam
