#include "ui/controls/Switch.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "recorded/RecordedPlatform.h"
#include "support/Widgets.h"

namespace tollbeam {
namespace {

class SwitchTest : public testing::Test {
 protected:
  SwitchTest() {
    appearance.animated = false;
    control.resize(control.sizeHint());
  }
  QImage picture() {
    QImage image(control.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    control.render(&image, {}, {}, {});
    return image;
  }
  bool isAccent(QPoint at) {
    return picture().pixelColor(at).rgb() == style.colours().accent.rgb();
  }

  RecordedAppearance appearance;
  Style style{appearance};
  Switch control{style};
  QSignalSpy toggled{&control, &Switch::toggled};
};

TEST_F(SwitchTest, EmitsToggledForTheUsersActionsOnly) {
  control.setOn(true);
  control.setOn(false);
  EXPECT_EQ(toggled.count(), 0);
  QTest::mouseClick(&control, Qt::LeftButton);
  QTest::keyClick(&control, Qt::Key_Space);
  EXPECT_EQ(toggled.count(), 2);
  EXPECT_EQ(toggled.at(0).at(0), true);
  EXPECT_EQ(toggled.at(1).at(0), false);
}

TEST_F(SwitchTest, ItsThumbIsAtTheOtherEndWhenMirrored) {
  control.setOn(true);
  const int middle = control.height() / 2;
  EXPECT_TRUE(isAccent({6, middle}));
  EXPECT_FALSE(isAccent({control.width() - 8, middle})) << "the thumb";
  control.setLayoutDirection(Qt::RightToLeft);
  EXPECT_FALSE(isAccent({8, middle}));
  EXPECT_TRUE(isAccent({control.width() - 6, middle}));
}

TEST_F(SwitchTest, IsACheckBoxForAScreenReader) {
  QAccessibleInterface* heard = test::spoken(&control);
  EXPECT_EQ(heard->role(), QAccessible::CheckBox);
  EXPECT_FALSE(heard->state().checked);
  heard->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(toggled.count(), 1) << "a screen reader acts for the user";
  EXPECT_TRUE(heard->state().checked);
  control.show();
  EXPECT_EQ(heard->rect().size(), control.size());
  control.setEnabled(false);
  heard->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(toggled.count(), 1);
}

TEST_F(SwitchTest, ADisabledOneIsFadedAsAWhole) {
  control.setOn(true);
  control.setEnabled(false);
  const QColor ground = picture().pixelColor(6, control.height() / 2);
  const QColor accent = style.colours().accent;
  EXPECT_NEAR(ground.red(), 255 - 0.45 * (255 - accent.red()), 3);
  EXPECT_EQ(picture().pixelColor(control.width() - 10, control.height() / 2), QColor(Qt::white))
      << "the accent does not shine through the thumb";
}

}  // namespace
}  // namespace tollbeam
