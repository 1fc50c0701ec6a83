#include "ui/controls/LinkButton.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "recorded/RecordedPlatform.h"
#include "support/Keyboard.h"
#include "ui/controls/TextLine.h"

namespace tollbeam {
namespace {

TEST(LinkButton, TakesClicksBesideItsWords) {
  RecordedAppearance appearance;
  const Style style(appearance);
  LinkButton link(style, QStringLiteral("Cancel"));
  link.resize(link.sizeHint());
  const double words = widthOfLine(link.text(), link.font(), Figures::proportional);
  EXPECT_GE(link.width(), words + 2 * style.px(5));
  EXPECT_GE(link.height(), 24);
  QSignalSpy clicks(&link, &QPushButton::clicked);
  QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(1, 1));
  EXPECT_EQ(clicks.size(), 1);
}

TEST(LinkButton, IsPressedByTheKeyboard) {
  RecordedAppearance appearance;
  const Style style(appearance);
  LinkButton link(style, QStringLiteral("Cancel"));
  test::expectPressedByTheKeyboard(link);
}

}  // namespace
}  // namespace tollbeam
