#include "ui/controls/Row.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class RowTest : public testing::Test {
 protected:
  // The columns of the left or right half in which there is ink of this colour.
  int inked(const QColor& colour, bool rightHalf) {
    row.resize(300, row.heightForWidth(300));
    QImage image(row.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    row.render(&image, {}, {}, {});
    int count = 0;
    for (int x = rightHalf ? 150 : 0; x < (rightHalf ? 300 : 150); ++x) {
      for (int y = 0; y < image.height(); ++y) count += image.pixelColor(x, y) == colour ? 1 : 0;
    }
    return count;
  }

  RecordedAppearance appearance;
  Style style{appearance};
  Row row{style};
};

TEST_F(RowTest, IsOneTextForScreenReaders) {
  row.setReading(QStringLiteral("Battery health"), QStringLiteral("93% · Good"), Ink::green);
  const auto* spoken = QAccessible::queryAccessibleInterface(&row);
  EXPECT_EQ(spoken->role(), QAccessible::StaticText);
  EXPECT_EQ(spoken->text(QAccessible::Name), QStringLiteral("Battery health: 93% · Good"));
}

TEST_F(RowTest, HasTheLabelAtOneEndAndTheValueAtTheOther) {
  row.setReading(QStringLiteral("████"), QStringLiteral("████"), Ink::red);
  EXPECT_GT(inked(style.colours().primary, false), 0);
  EXPECT_EQ(inked(style.colours().primary, true), 0);
  EXPECT_GT(inked(style.colours().redText, true), 0);
  EXPECT_EQ(inked(style.colours().redText, false), 0);
}

TEST_F(RowTest, SwapsItsEndsInAMirroredWindow) {
  row.setLayoutDirection(Qt::RightToLeft);
  row.setReading(QStringLiteral("████"), QStringLiteral("████"), Ink::red);
  EXPECT_GT(inked(style.colours().primary, true), 0);
  EXPECT_GT(inked(style.colours().redText, false), 0);
}

TEST_F(RowTest, PutsTheValueBelowWhereBothDoNotFit) {
  row.setReading(QStringLiteral("A label of many words that says a lot"),
                 QStringLiteral("and a value of nearly as many"));
  const int line = style.lineHeight(Role::callout);
  EXPECT_EQ(row.heightForWidth(2000), line);
  EXPECT_GT(row.heightForWidth(300), line);
  EXPECT_GT(row.heightForWidth(120), row.heightForWidth(300));
}

}  // namespace
}  // namespace tollbeam
