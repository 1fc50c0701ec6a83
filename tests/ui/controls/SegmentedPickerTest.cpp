#include "ui/controls/SegmentedPicker.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>
#include <QSignalSpy>
#include <QTest>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class SegmentedPickerTest : public testing::Test {
 protected:
  SegmentedPickerTest() { picker.resize(308, picker.heightForWidth(308)); }

  QRadioButton* segment(int index) { return picker.findChildren<QRadioButton*>()[index]; }
  QColor at(int x) {
    QImage image(picker.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(style.colours().surface);
    picker.render(&image, {}, {}, {});
    return image.pixelColor(x, 5);
  }

  RecordedAppearance appearance;
  Style style{appearance};
  SegmentedPicker picker{
      style, QStringLiteral("History"), {QStringLiteral("24 hours"), QStringLiteral("7 days")}};
};

TEST_F(SegmentedPickerTest, StartsWithTheFirstChoice) {
  EXPECT_EQ(picker.chosen(), 0);
  EXPECT_EQ(at(20), style.colours().segment);
  EXPECT_NE(at(288), style.colours().segment);
}

TEST_F(SegmentedPickerTest, ChoosesByAClickAnywhereOnASegment) {
  QSignalSpy changes(&picker, &SegmentedPicker::chosenChanged);
  QTest::mouseClick(segment(1), Qt::LeftButton, {}, QPoint(3, 3));
  EXPECT_EQ(picker.chosen(), 1);
  ASSERT_EQ(changes.size(), 1);
  EXPECT_EQ(changes[0][0].toInt(), 1);
  EXPECT_EQ(at(288), style.colours().segment);
  EXPECT_NE(at(20), style.colours().segment);
  QTest::mouseClick(segment(1), Qt::LeftButton);
  EXPECT_EQ(changes.size(), 1) << "already chosen";
}

TEST_F(SegmentedPickerTest, HasEqualSegmentsInReadingOrder) {
  picker.show();
  EXPECT_EQ(segment(0)->width(), segment(1)->width());
  EXPECT_LT(segment(0)->x(), segment(1)->x());
  picker.setLayoutDirection(Qt::RightToLeft);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  EXPECT_GT(segment(0)->x(), segment(1)->x());
  EXPECT_EQ(at(288), style.colours().segment);
}

TEST_F(SegmentedPickerTest, GrowsForLongWords) {
  SegmentedPicker wordy(style, {},
                        {QStringLiteral("The last twenty-four hours of it"), QStringLiteral("7")});
  EXPECT_GT(wordy.heightForWidth(200), picker.heightForWidth(308));
  EXPECT_EQ(picker.heightForWidth(308), style.px(28));
}

TEST_F(SegmentedPickerTest, IsAGroupOfRadioButtonsForScreenReaders) {
  const auto* group = QAccessible::queryAccessibleInterface(&picker);
  EXPECT_EQ(group->role(), QAccessible::Grouping);
  EXPECT_EQ(group->text(QAccessible::Name), u"History");
  const auto* first = QAccessible::queryAccessibleInterface(segment(0));
  EXPECT_EQ(first->role(), QAccessible::RadioButton);
  EXPECT_TRUE(first->state().checked);
  EXPECT_FALSE(QAccessible::queryAccessibleInterface(segment(1))->state().checked);
}

TEST_F(SegmentedPickerTest, ScreenReadersGetTheRectangleOfEachSegment) {
  picker.show();
  for (const int index : {0, 1}) {
    const QRect seen(segment(index)->mapToGlobal(QPoint()), segment(index)->size());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(segment(index))->rect(), seen);
  }
}

}  // namespace
}  // namespace tollbeam
