#include "ui/controls/Text.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

class TextTest : public testing::Test {
 protected:
  RecordedAppearance appearance;
  Style style{appearance};
};

TEST_F(TextTest, IsAsWideAsItsWordsAndAsHighAsItsLine) {
  Text text(style, Role::body, Ink::primary);
  text.setText(QString::fromUtf8("Settings"));
  EXPECT_EQ(text.sizeHint().height(), style.lineHeight(Role::body));
  const int width = text.sizeHint().width();
  text.setText(QString::fromUtf8("Settings and more"));
  EXPECT_GT(text.sizeHint().width(), width);
}

TEST_F(TextTest, GrowsByALineForEachBreak) {
  Text text(style, Role::body, Ink::primary);
  text.setText(QString::fromUtf8("Charging, estimating time to full"));
  text.setBreaks(Breaks::afterComma);
  const int wide = text.sizeHint().width();
  EXPECT_EQ(text.heightForWidth(wide), style.lineHeight(Role::body));
  EXPECT_EQ(text.heightForWidth(wide - 1), 2 * style.lineHeight(Role::body));
}

TEST_F(TextTest, PaintsInItsInk) {
  Text text(style, Role::headline, Ink::red);
  text.setText(QString::fromUtf8("██"));
  text.resize(text.sizeHint());
  QImage image(text.size(), QImage::Format_ARGB32);
  image.fill(Qt::white);
  text.render(&image, {}, {}, {});
  EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2).rgb(),
            style.colours().redText.rgb());
}

TEST_F(TextTest, IsStaticTextForScreenReaders) {
  Text text(style, Role::body, Ink::primary);
  text.setText(QString::fromUtf8("Temperature"));
  const auto* spoken = QAccessible::queryAccessibleInterface(&text);
  ASSERT_NE(spoken, nullptr);
  EXPECT_EQ(spoken->role(), QAccessible::StaticText);
  EXPECT_EQ(spoken->text(QAccessible::Name), QStringLiteral("Temperature"));
}

}  // namespace
}  // namespace tollbeam
