#include "ui/popover/SnoozeBanner.h"

#include <gtest/gtest.h>

#include "recorded/RecordedPlatform.h"
#include "support/Widgets.h"

namespace tollbeam {
namespace {

class SnoozeBannerTest : public testing::Test {
 protected:
  void show(const QString& text, int width) {
    banner.setText(text);
    banner.resize(width, banner.heightForWidth(width));
    banner.show();
  }

  const QWidget& text() { return *banner.findChild<Text*>(); }
  const QWidget& link() { return *banner.findChild<LinkButton*>(); }

  RecordedAppearance appearance;
  Style style{appearance};
  SnoozeBanner banner{style};
};

TEST_F(SnoozeBannerTest, PlacesTheLinkBesideTheText) {
  show(QStringLiteral("Alerts snoozed until 15:05"), style.px(240));
  EXPECT_LE(text().geometry().right(), link().x() + style.px(5));
  EXPECT_EQ(text().geometry().center().y(), link().geometry().center().y());
}

TEST_F(SnoozeBannerTest, PlacesTheLinkBelowWhereAWordWouldBreak) {
  show(QStringLiteral("Benachrichtigungserinnerungen pausiert"), style.px(180));
  EXPECT_GE(link().y(), text().geometry().bottom());
  EXPECT_LE(link().geometry().bottom(), banner.rect().bottom());
  EXPECT_LE(text().geometry().right(), banner.rect().right() - style.px(10));
}

}  // namespace
}  // namespace tollbeam
