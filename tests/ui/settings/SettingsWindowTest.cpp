#include "ui/settings/SettingsWindow.h"

#include <gtest/gtest.h>

#include <QScreen>

#include "recorded/RecordedPlatform.h"
#include "support/Widgets.h"

namespace tollbeam {
namespace {

QSize workArea() { return QGuiApplication::primaryScreen()->availableGeometry().size(); }

class SettingsWindowTest : public testing::Test {
 protected:
  ~SettingsWindowTest() override { QApplication::setFont(before); }

  QFont before = QApplication::font();
  RecordedAppearance appearance;
  Style style{appearance};
  SettingsWindow window{style, new QWidget};
};

TEST_F(SettingsWindowTest, HasItsTitleAndItsSize) {
  window.show();
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Tollbeam Settings"));
  ASSERT_GE(workArea().height(), 780) << "the test needs a higher screen";
  EXPECT_EQ(window.size(), QSize(480, 720));
  EXPECT_EQ(window.minimumSize(), window.size());
  EXPECT_EQ(window.maximumSize(), window.size());
}

TEST_F(SettingsWindowTest, IsNeverLargerThanTheWorkArea) {
  window.show();
  const QSize whole = window.frameGeometry().size();
  EXPECT_LE(whole.width(), workArea().width());
  EXPECT_LE(whole.height(), workArea().height());
}

TEST_F(SettingsWindowTest, GrowsWithTheFontUpToTheWorkArea) {
  QFont font = before;
  font.setPixelSize(22);
  QApplication::setFont(font);
  ASSERT_TRUE(test::waitFor([&] { return style.scale() > 1.4; }));
  window.show();
  ASSERT_LE(style.px(480), workArea().width());
  EXPECT_EQ(window.width(), style.px(480));
  ASSERT_GT(style.px(720), workArea().height());
  EXPECT_EQ(window.frameGeometry().height(), workArea().height());
}

}  // namespace
}  // namespace tollbeam
