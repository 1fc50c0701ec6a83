#include "ui/controls/ScrollPage.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QVBoxLayout>

#include "recorded/RecordedPlatform.h"
#include "support/Widgets.h"
#include "ui/controls/Stepper.h"

namespace tollbeam {
namespace {

class ScrollPageTest : public testing::Test {
 protected:
  ScrollPageTest() {
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    for (int i = 0; i < 20; ++i) {
      steppers.push_back(new Stepper(style, {0, 100}));
      steppers.back()->setValue(50);
      QObject::connect(steppers.back(), &Stepper::wanted, [this] { ++changes; });
      column->addWidget(steppers.back());
    }
    page.emplace(style, content);
    for (Stepper* stepper : steppers) page->keepWheelFrom(stepper);
    page->resize(200, 200);
    test::showActive(*page);
  }
  int scrolled() const { return page->verticalScrollBar()->value(); }

  RecordedAppearance appearance;
  Style style{appearance};
  std::vector<Stepper*> steppers;
  std::optional<ScrollPage> page;
  int changes = 0;
};

TEST_F(ScrollPageTest, TheWheelOverAControlScrolls) {
  test::turnWheel(*steppers[1], -120);
  EXPECT_GT(scrolled(), 0);
  EXPECT_EQ(changes, 0);
}

TEST_F(ScrollPageTest, TheWheelOverADisabledControlScrolls) {
  steppers[1]->setEnabled(false);
  test::turnWheel(*steppers[1], -120);
  EXPECT_GT(scrolled(), 0);
}

TEST_F(ScrollPageTest, AScrollContinuesOverTheFocusedControl) {
  steppers[3]->setFocus();
  test::turnWheel(*page->viewport(), -120);
  const int before = scrolled();
  test::turnWheel(*steppers[3], -120);
  EXPECT_GT(scrolled(), before);
  EXPECT_EQ(changes, 0);
}

TEST_F(ScrollPageTest, TheWheelOverTheFocusedControlChangesIt) {
  steppers[3]->setFocus();
  test::turnWheel(*steppers[3], -120);
  EXPECT_EQ(scrolled(), 0);
  EXPECT_EQ(changes, 1);
}

TEST_F(ScrollPageTest, TabScrollsTheFocusedControlIntoView) {
  steppers[0]->setFocus();
  for (int i = 0; i < 12; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  ASSERT_TRUE(steppers[12]->hasFocus());
  const QRect view = page->viewport()->rect();
  const QPoint at = steppers[12]->mapTo(page->viewport(), steppers[12]->rect().center());
  EXPECT_TRUE(view.contains(at)) << at.y();
  for (int i = 0; i < 12; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
  EXPECT_EQ(scrolled(), 0) << "what stands above it is shown too";
}

TEST_F(ScrollPageTest, TheBarMovesThePage) {
  const QPoint end(page->width() - 5, page->height() - 5);
  QWidget* bar = page->childAt(end);
  ASSERT_NE(bar, nullptr);
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->mapFrom(&*page, end));
  EXPECT_EQ(scrolled(), page->verticalScrollBar()->maximum());
}

TEST_F(ScrollPageTest, TheBarFollowsThePointerThatHoldsIt) {
  QScrollBar* bar = page->verticalScrollBar();
  const QPoint thumb(bar->width() / 2, 10);
  QTest::mousePress(bar, Qt::LeftButton, {}, thumb);
  QTest::mouseMove(bar, thumb + QPoint(0, 20));
  const int dragged = scrolled();
  EXPECT_GT(dragged, 0);
  EXPECT_LT(dragged, bar->maximum());
  QTest::mouseMove(bar, thumb);
  EXPECT_EQ(scrolled(), 0);
  QTest::mouseRelease(bar, Qt::LeftButton, {}, thumb);
}

TEST_F(ScrollPageTest, TheBarTakesNoRoomAndHidesWhereEverythingFits) {
  EXPECT_TRUE(page->verticalScrollBar()->isVisible());
  EXPECT_EQ(page->viewport()->rect(), page->rect());
  page->resize(200, page->widget()->sizeHint().height());
  QCoreApplication::processEvents();
  EXPECT_FALSE(page->verticalScrollBar()->isVisible());
}

}  // namespace
}  // namespace tollbeam
