#include "ui/chart/HistoryChart.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPaintEvent>
#include <limits>

#include "support/Histories.h"
#include "support/ModelPorts.h"

namespace tollbeam {
namespace {

constexpr Date kNow{1763648400};  // 14:20
constexpr double kHour = 3600;

using Stretches = std::vector<std::vector<test::Corner>>;

class PaintCount : public QObject {
 public:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      ++paints;
      region += static_cast<QPaintEvent*>(event)->region();
    }
    return false;
  }
  [[nodiscard]] int area() const {
    int pixels = 0;
    for (const QRect& rect : region) pixels += rect.width() * rect.height();
    return pixels;
  }

  int paints = 0;
  QRegion region;
};

class HistoryChartTest : public testing::Test {
 protected:
  ~HistoryChartTest() override { QLocale::setDefault(QLocale::c()); }

  /// Times are in hours relative to now.
  void history(const Stretches& stretches) {
    test::store(test::samplesAlong(stretches, kNow), platform.fileManager);
  }
  HistoryChart& made() {
    model.emplace(test::modelPorts(platform));
    return chart.emplace(*model, platform.clock, platform.calendar, style);
  }
  HistoryChart& shown() {
    HistoryChart& c = made();
    c.resize(c.sizeHint());
    c.show();
    return c;
  }
  void battery(int percent) {
    platform.powerSources.table = List{Dictionary{
        {"Type", "InternalBattery"}, {"Current Capacity", percent}, {"Max Capacity", 100}}};
  }
  QWidget* placeholder() { return chart->findChild<Text*>(); }
  bool showsPlaceholder() { return placeholder()->isVisible(); }
  void point(double x) {
    const QPointF at(x, 40);
    QMouseEvent move(QEvent::MouseMove, at, chart->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&*chart, &move);
  }
  void leave() {
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(&*chart, &event);
  }
  /// The x of a time in hours relative to now.
  double xOf(double hours) { return chart->picture().frame().x(kNow + hours * kHour); }
  double yOf(std::int64_t percent) { return chart->picture().frame().y(percent); }
  QColor colourAt(double x, double y) {
    return chart->grab().toImage().pixelColor(static_cast<int>(x), static_cast<int>(y));
  }

  RecordedPlatform platform{kNow};
  Style style{platform.appearance};
  std::optional<AppModel> model;
  std::optional<HistoryChart> chart;
};

TEST_F(HistoryChartTest, ShowsThePlaceholderWithoutAHistory) {
  shown();
  ASSERT_TRUE(showsPlaceholder());
  EXPECT_EQ(static_cast<QLabel*>(placeholder())->text(),
            QString::fromUtf8("Collecting history… a graph appears after a few minutes."));
  EXPECT_EQ(placeholder()->geometry().center().y(), chart->rect().center().y());
}

TEST_F(HistoryChartTest, NeedsTwoPoints) {
  history({{{-1, 50}}});
  shown();
  EXPECT_TRUE(showsPlaceholder());
  history({{{-1, 50}, {-0.99, 50}}});
  shown();
  EXPECT_FALSE(showsPlaceholder());
}

TEST_F(HistoryChartTest, CountsOnlyPointsOfItsRange) {
  history({{{-60, 50}, {-50, 60}}, {{-1, 50}}});
  shown();
  EXPECT_TRUE(showsPlaceholder());
  chart->setDays(7);
  EXPECT_FALSE(showsPlaceholder());
  chart->setDays(1);
  EXPECT_TRUE(showsPlaceholder());
}

TEST_F(HistoryChartTest, DrawsALevelChargeAfterTheClockWasSetBack) {
  battery(75);
  made();
  platform.clock.set(kNow + 2 * kHour);
  model->refresh(AppModel::Reason::timer);
  for (const double minutesAgo : {40, 30, 20, 10, 0}) {
    platform.clock.set(kNow - minutesAgo * 60);
    model->refresh(AppModel::Reason::timer);
  }
  chart->resize(10 * chart->sizeHint().width(), chart->sizeHint().height());
  chart->show();
  EXPECT_EQ(colourAt(xOf(-0.3), yOf(75)), style.colours().accent);
}

TEST_F(HistoryChartTest, DrawsTheChargeInTheAccentColour) {
  history({{{-12, 75}, {-1, 75}}});
  shown();
  EXPECT_EQ(colourAt(xOf(-6), yOf(75)), style.colours().accent);
  EXPECT_NE(colourAt(xOf(-18), yOf(75)), style.colours().accent) << "before the first sample";
}

TEST_F(HistoryChartTest, ConnectsAllPointsOfASegment) {
  history({{{-24, 10}, {-18, 90}, {-12, 10}, {-6, 90}, {0, 10}}});
  shown();
  const QImage image = chart->grab().toImage();
  for (int x = 2; x < xOf(0) - 2; ++x) {
    int drawn = 0;
    for (int y = 0; y < image.height(); ++y) {
      const QColor pixel = image.pixelColor(x, y);
      drawn += pixel.blue() - pixel.red() > 60;
    }
    ASSERT_GT(drawn, 0) << x;
  }
}

TEST_F(HistoryChartTest, LeavesAGapUnconnected) {
  history({{{-20, 75}, {-15, 75}}, {{-5, 75}, {-1, 75}}});
  shown();
  EXPECT_EQ(colourAt(xOf(-17), yOf(75)), style.colours().accent);
  EXPECT_EQ(colourAt(xOf(-3), yOf(75)), style.colours().accent);
  const QImage image = chart->grab().toImage();
  for (int x = static_cast<int>(xOf(-14.5)); x < xOf(-5.5); ++x) {
    ASSERT_NE(image.pixelColor(x, static_cast<int>(yOf(75))), style.colours().accent) << x;
  }
}

TEST_F(HistoryChartTest, ShowsASinglePointAsADot) {
  history({{{-20, 75}, {-15, 75}}, {{-10, 30}}});
  shown();
  const auto blue = [&](double x) {
    const QColor colour = colourAt(x, yOf(30) - 0.5);
    return colour.blue() - colour.red();
  };
  EXPECT_GT(std::max(blue(xOf(-10)), blue(xOf(-10) - 1)), blue(xOf(-10) + 5) + 20);
}

TEST_F(HistoryChartTest, HasItsSizeAndMargins) {
  history({{{-20, 75}, {-15, 75}}});
  shown();
  EXPECT_EQ(chart->size(), QSize(style.px(308), style.px(110)));
  const QRectF& plot = chart->picture().frame().plot;
  EXPECT_EQ(plot.top(), style.px(6));
  EXPECT_EQ(plot.left(), 0);
  EXPECT_LE(plot.right(), style.px(274));
  EXPECT_LE(plot.bottom(), style.px(92));
}

TEST_F(HistoryChartTest, RunsFromLeftToRightWhenMirrored) {
  history({{{-20, 75}, {-15, 75}}});
  shown();
  chart->setLayoutDirection(Qt::RightToLeft);
  const QRectF& plot = chart->picture().frame().plot;
  EXPECT_GE(plot.left(), style.px(34)) << "room for the values";
  EXPECT_EQ(plot.right(), chart->width());
  EXPECT_LT(xOf(-20), xOf(-15));
}

TEST_F(HistoryChartTest, IsHarmlessForAnyNumberOfDays) {
  history({{{-700, 20}, {-600, 90}}, {{-3, 40}, {3, 60}}});
  shown();
  for (const int days : {0, -1, 2, 30, 31, 365, 1'000'000, std::numeric_limits<int>::max(),
                         std::numeric_limits<int>::min()}) {
    chart->setDays(days);
    chart->grab();
    for (double x = 0; x < chart->width(); x += 10) point(x);
  }
}

TEST_F(HistoryChartTest, IsHarmlessForAnyHistory) {
  constexpr auto kHuge = std::numeric_limits<std::int64_t>::max();
  test::store({{.t = kNow.secondsSince1970 - 60, .p = kHuge},
               {.t = kNow.secondsSince1970 - 30, .p = -kHuge},
               {.t = kNow.secondsSince1970, .p = 50},
               {.t = 1e18, .p = 50}},
              platform.fileManager);
  shown();
  chart->grab();
  EXPECT_FALSE(showsPlaceholder());
}

TEST_F(HistoryChartTest, ComputesNothingWhileHidden) {
  history({{{-20, 75}, {-1, 75}}});
  made();
  model->refresh(AppModel::Reason::timer);
  EXPECT_TRUE(chart->picture().points().empty());
  chart->show();
  EXPECT_FALSE(chart->picture().points().empty());
  chart->hide();
  EXPECT_TRUE(chart->picture().points().empty()) << "kept its picture while hidden";
}

TEST_F(HistoryChartTest, FollowsTheHistory) {
  shown();
  battery(64);
  model->refresh(AppModel::Reason::timer);
  EXPECT_TRUE(showsPlaceholder());
  platform.clock.set(kNow + 60);
  model->refresh(AppModel::Reason::timer);
  EXPECT_FALSE(showsPlaceholder());
  model->resetHistory();
  EXPECT_TRUE(showsPlaceholder());
}

TEST_F(HistoryChartTest, EndsAtNowEachTimeItIsShown) {
  history({{{-20, 75}, {-1, 75}}});
  shown();
  chart->hide();
  platform.clock.set(kNow + 3 * kHour);
  chart->show();
  EXPECT_EQ(chart->picture().frame().now, kNow + 3 * kHour);
}

TEST_F(HistoryChartTest, MarksTheValueUnderThePointer) {
  QLocale::setDefault(QLocale(QStringLiteral("en_GB")));
  history({{{-20, 75}, {-15, 75}}, {{-5, 60}, {-1, 60}}});
  shown();
  point(xOf(-3));
  ASSERT_TRUE(chart->marker());
  EXPECT_EQ(chart->marker()->time(), QStringLiteral("11:20"));
  EXPECT_EQ(chart->marker()->percent(), QStringLiteral("60%"));
  point(xOf(-10));
  EXPECT_FALSE(chart->marker()) << "over the gap";
  chart->setDays(7);
  point(xOf(-17));
  ASSERT_TRUE(chart->marker());
  EXPECT_TRUE(chart->marker()->time().startsWith(QStringLiteral("Wed 21:")));
  leave();
  EXPECT_FALSE(chart->marker());
}

TEST_F(HistoryChartTest, KeepsTheMarkerThroughARefreshAndDropsItWhenHidden) {
  history({{{-5, 60}, {-1, 60}}});
  shown();
  point(xOf(-3));
  model->refresh(AppModel::Reason::timer);
  EXPECT_TRUE(chart->marker());
  chart->hide();
  chart->show();
  EXPECT_FALSE(chart->marker());
}

TEST_F(HistoryChartTest, KeepsTheMarkerInsideTheChart) {
  history({{{-24, 99}, {0, 1}}});
  shown();
  for (int x = 0; x < chart->width(); ++x) {
    point(x);
    if (!chart->marker()) continue;
    const int dot = style.px(6);
    const QRect reach = chart->rect().adjusted(-dot, -dot, dot, dot);
    EXPECT_TRUE(reach.contains(chart->marker()->region().boundingRect())) << x;
  }
}

TEST_F(HistoryChartTest, RepaintsOnlyTheMarkerWhenThePointerMoves) {
  history({{{-24, 99}, {0, 1}}});
  shown();
  point(100);
  QCoreApplication::processEvents();
  PaintCount count;
  chart->installEventFilter(&count);
  point(100);
  QCoreApplication::processEvents();
  EXPECT_EQ(count.paints, 0) << "still the same point";
  point(110);
  while (count.paints == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  EXPECT_LT(count.area(), chart->width() * chart->height() / 3);
}

TEST_F(HistoryChartTest, DescribesItselfInOneSentenceToScreenReaders) {
  history({{{-5, 48}, {-3, 80}, {0, 64}}});
  shown();
  auto* spoken = QAccessible::queryAccessibleInterface(&*chart);
  ASSERT_NE(spoken, nullptr);
  EXPECT_EQ(spoken->role(), QAccessible::Chart);
  EXPECT_EQ(spoken->text(QAccessible::Name), QStringLiteral("Charge history"));
  EXPECT_EQ(spoken->text(QAccessible::Description),
            QStringLiteral("Last 24 hours: 48% to 80%, now 64%."));
  EXPECT_EQ(chart->focusPolicy(), Qt::NoFocus);
}

TEST_F(HistoryChartTest, PlaceholderIsATextForScreenReaders) {
  shown();
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&*chart)->text(QAccessible::Description),
            QString());
  EXPECT_EQ(QAccessible::queryAccessibleInterface(placeholder())->role(), QAccessible::StaticText);
}

TEST_F(HistoryChartTest, GrowsWithTheFont) {
  made();
  const QFont before = QApplication::font();
  QFont large = before;
  large.setPixelSize(30);
  QApplication::setFont(large);
  EXPECT_EQ(chart->sizeHint(), QSize(616, 220));
  QApplication::setFont(before);
}

}  // namespace
}  // namespace tollbeam
