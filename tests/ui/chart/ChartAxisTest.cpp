#include "ui/chart/ChartAxis.h"

#include <gtest/gtest.h>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

constexpr Date kNow{1763648400};  // Thursday, 14:20
constexpr double kDay = 86400;

class ChartAxisTest : public testing::Test {
 protected:
  ChartFrame frame(double days, Date now = kNow) const {
    return {QRectF(0, 6, 274, 86), now - days * kDay, now};
  }
  TimeAxis hours(const ChartFrame& of) const {
    return hourAxis(of, calendar, QLocale(language), room);
  }
  TimeAxis days(const ChartFrame& of) const {
    return dayAxis(of, calendar, QLocale(language), room);
  }
  static QStringList texts(const TimeAxis& axis) {
    QStringList result;
    for (const TimeLabel& label : axis.labels) result << label.text;
    return result;
  }

  RecordedCalendar calendar;
  QString language = QStringLiteral("en_GB");
  double letter = 6;
  LabelRoom room{.widthOf = [this](const QString& t) { return letter * double(t.size()); },
                 .scale = 1,
                 .left = 0,
                 .right = 308};
};

TEST_F(ChartAxisTest, LabelsTheHoursUnderTheirLines) {
  const TimeAxis axis = hours(frame(1));
  EXPECT_EQ(texts(axis), (QStringList{QStringLiteral("18:00"), QStringLiteral("00:00"),
                                      QStringLiteral("06:00"), QStringLiteral("12:00")}));
  ASSERT_EQ(axis.lines.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_DOUBLE_EQ(axis.labels[i].centre, axis.lines[i]);
}

TEST_F(ChartAxisTest, DropsALabelAtTheEdgeButNotItsLine) {
  const TimeAxis axis = hours(frame(1, Date{1763640000} + 60));  // 12:01
  EXPECT_EQ(axis.lines.size(), 4U);
  EXPECT_EQ(texts(axis).last(), QStringLiteral("06:00"))
      << "12:00 is too close to the end of the plot";
}

TEST_F(ChartAxisTest, CutsNoLabelOff) {
  room.right = 274;                                                // as in a mirrored chart
  const TimeAxis axis = hours(frame(1, Date{1763640000} + 3600));  // 13:00
  EXPECT_EQ(texts(axis).last(), QStringLiteral("06:00")) << "12:00 would reach beyond the widget";
}

TEST_F(ChartAxisTest, LeavesOutHoursThatWouldBeTooClose) {
  letter = 14;
  EXPECT_EQ(texts(hours(frame(1))),
            (QStringList{QStringLiteral("00:00"), QStringLiteral("12:00")}));
  letter = 27;
  EXPECT_EQ(texts(hours(frame(1))), QStringList{QStringLiteral("00:00")});
}

TEST_F(ChartAxisTest, CentresWeekdaysBetweenMidnights) {
  const TimeAxis axis = days(frame(7));
  EXPECT_EQ(texts(axis).join(u' '), QStringLiteral("Fri Sat Sun Mon Tue Wed"));
  ASSERT_EQ(axis.lines.size(), 7U);
  EXPECT_DOUBLE_EQ(axis.labels[0].centre, (axis.lines[0] + axis.lines[1]) / 2);
}

TEST_F(ChartAxisTest, LabelsAPartOfADayWhereThereIsRoom) {
  const TimeAxis axis = days(frame(7, kNow + 7 * 3600));  // 21:20
  EXPECT_EQ(texts(axis).last(), QStringLiteral("Thu"));
  EXPECT_DOUBLE_EQ(axis.labels.back().centre, (axis.lines.back() + 274) / 2);
}

TEST_F(ChartAxisTest, UsesLettersWhereWeekdaysAreTooWide) {
  language = QStringLiteral("pt_PT");
  EXPECT_EQ(texts(days(frame(7))).join(u' '), QStringLiteral("S S D S T Q"));
}

TEST_F(ChartAxisTest, DrawsNoLinesThatWouldBeTooClose) {
  EXPECT_FALSE(days(frame(30)).lines.empty());
  EXPECT_TRUE(days(frame(30)).labels.empty());
  EXPECT_TRUE(days(frame(500)).lines.empty());
  EXPECT_TRUE(days(frame(0)).lines.empty());
  EXPECT_TRUE(hours(frame(-3)).lines.empty());
}

}  // namespace
}  // namespace tollbeam
