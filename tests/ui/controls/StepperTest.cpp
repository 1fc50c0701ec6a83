#include "ui/controls/Stepper.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QSignalSpy>
#include <limits>
#include <random>
#include <set>

#include "recorded/RecordedPlatform.h"
#include "support/Widgets.h"

namespace tollbeam {
namespace {

constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

class StepperTest : public testing::Test {
 protected:
  StepperTest() {
    stepper.resize(stepper.sizeHint());
    // As the bindings do: stores and shows the value that is asked for.
    QObject::connect(&stepper, &Stepper::wanted, [this](std::int64_t value) {
      wanted.push_back(value);
      stepper.setValue(value);
    });
    stepper.setValue(80);
  }

  QPoint cell(Step step) const {
    return {step == Step::down ? stepper.width() / 4 : stepper.width() * 3 / 4,
            stepper.height() / 2};
  }
  void click(Step step) { QTest::mouseClick(&stepper, Qt::LeftButton, {}, cell(step)); }

  RecordedAppearance appearance;
  Style style{appearance};
  Stepper stepper{style, {50, 100}};
  std::vector<std::int64_t> wanted;
};

TEST(Stepped, MovesByOneWithinTheRange) {
  EXPECT_EQ(stepped(80, Step::up, {50, 100}), 81);
  EXPECT_EQ(stepped(80, Step::down, {50, 100}), 79);
  EXPECT_EQ(stepped(99, Step::up, {50, 100}), 100);
  EXPECT_EQ(stepped(51, Step::down, {50, 100}), 50);
}

TEST(Stepped, StopsAtTheEnds) {
  for (const Range range : {Range{50, 100}, Range{5, 50}, Range{10, 60}, Range{1, 48}}) {
    EXPECT_EQ(stepped(range.most, Step::up, range), std::nullopt);
    EXPECT_EQ(stepped(range.least, Step::down, range), std::nullopt);
    EXPECT_EQ(stepped(range.most, Step::down, range), range.most - 1);
    EXPECT_EQ(stepped(range.least, Step::up, range), range.least + 1);
  }
}

TEST(Stepped, BringsAStrayValueToTheNearestEnd) {
  EXPECT_EQ(stepped(120, Step::down, {50, 100}), 100);
  EXPECT_EQ(stepped(101, Step::down, {50, 100}), 100);
  EXPECT_EQ(stepped(-7, Step::up, {50, 100}), 50);
  EXPECT_EQ(stepped(49, Step::up, {50, 100}), 50);
  EXPECT_EQ(stepped(120, Step::up, {50, 100}), std::nullopt);
  EXPECT_EQ(stepped(-7, Step::down, {50, 100}), std::nullopt);
  EXPECT_EQ(stepped(kMost, Step::down, {50, 100}), 100);
  EXPECT_EQ(stepped(kLeast, Step::up, {50, 100}), 50);
}

TEST(Stepped, NeverLeadsOutOfTheRange) {
  std::mt19937_64 random(20251120);
  std::uniform_int_distribution<std::int64_t> any(kLeast, kMost);
  std::uniform_int_distribution<std::int64_t> near(-10, 130);
  for (int i = 0; i < 20000; ++i) {
    const std::int64_t a = near(random);
    const Range range{a, a + std::abs(near(random))};
    const std::int64_t value = i % 2 ? any(random) : near(random);
    const Step step = i % 3 ? Step::up : Step::down;
    const auto next = stepped(value, step, range);
    if (!next) continue;
    EXPECT_GE(*next, range.least);
    EXPECT_LE(*next, range.most);
    // In the direction of the step, and by one if the value was inside.
    EXPECT_EQ(*next > value, step == Step::up);
    if (value >= range.least && value <= range.most) {
      EXPECT_EQ(std::abs(*next - value), 1);
    }
  }
}

TEST_F(StepperTest, ItsCellsStep) {
  click(Step::up);
  click(Step::up);
  click(Step::down);
  EXPECT_EQ(wanted, (std::vector<std::int64_t>{81, 82, 81}));
}

TEST_F(StepperTest, ItsCellsDoNothingAtTheEnds) {
  stepper.setValue(100);
  click(Step::up);
  EXPECT_TRUE(wanted.empty());
  stepper.setValue(50);
  click(Step::down);
  EXPECT_TRUE(wanted.empty());
}

TEST_F(StepperTest, AsksForAValueAndKeepsItsOwn) {
  Stepper alone(style, {50, 100});
  alone.setValue(80);
  QSignalSpy asked(&alone, &Stepper::wanted);
  EXPECT_TRUE(alone.take(Step::up));
  EXPECT_EQ(asked.count(), 1);
  EXPECT_EQ(alone.value(), 80);
}

TEST_F(StepperTest, SettingAValueEmitsNothing) {
  for (const std::int64_t value : {std::int64_t{120}, std::int64_t{0}, kLeast, kMost}) {
    stepper.setValue(value);
  }
  EXPECT_TRUE(wanted.empty());
}

TEST_F(StepperTest, KeysStep) {
  test::showActive(stepper);
  stepper.setFocus();
  for (const int key :
       {Qt::Key_Up, Qt::Key_Plus, Qt::Key_Right, Qt::Key_Down, Qt::Key_Minus, Qt::Key_Left}) {
    QTest::keyClick(&stepper, Qt::Key(key));
  }
  EXPECT_EQ(wanted, (std::vector<std::int64_t>{81, 82, 83, 82, 81, 80}));
}

TEST_F(StepperTest, SpaceDoesNotPressTheCellOfTheLastClick) {
  click(Step::up);
  QTest::keyClick(&stepper, Qt::Key_Space);
  EXPECT_EQ(wanted, std::vector<std::int64_t>{81});
}

TEST_F(StepperTest, AMirroredOneHasItsPlusOnTheLeft) {
  stepper.setLayoutDirection(Qt::RightToLeft);
  QTest::mouseClick(&stepper, Qt::LeftButton, {}, cell(Step::down));
  QTest::keyClick(&stepper, Qt::Key_Left);
  QTest::keyClick(&stepper, Qt::Key_Right);
  EXPECT_EQ(wanted, (std::vector<std::int64_t>{81, 82, 81}));
}

TEST_F(StepperTest, AHeldCellRepeatsUntilTheEndOfTheRange) {
  stepper.setValue(97);
  QTest::mousePress(&stepper, Qt::LeftButton, {}, cell(Step::up));
  EXPECT_TRUE(test::waitFor([&] { return stepper.value() == 100; }));
  QTest::mouseRelease(&stepper, Qt::LeftButton, {}, cell(Step::up));
  EXPECT_EQ(wanted, (std::vector<std::int64_t>{98, 99, 100}));
}

TEST_F(StepperTest, TheWheelStepsOnlyWithTheFocus) {
  test::showActive(stepper);
  stepper.clearFocus();
  test::turnWheel(stepper, 120);
  EXPECT_TRUE(wanted.empty());
  stepper.setFocus();
  test::turnWheel(stepper, 120);
  test::turnWheel(stepper, -60);
  EXPECT_EQ(wanted, (std::vector<std::int64_t>{81})) << "half a notch";
  test::turnWheel(stepper, -60);
  EXPECT_EQ(wanted, (std::vector<std::int64_t>{81, 80}));
}

TEST_F(StepperTest, ADisabledOneDoesNothing) {
  stepper.setEnabled(false);
  click(Step::up);
  EXPECT_FALSE(stepper.take(Step::up));
  test::spoken(&stepper)->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
  test::spoken(&stepper)->valueInterface()->setCurrentValue(90);
  EXPECT_TRUE(wanted.empty());
}

TEST_F(StepperTest, IsASpinButtonForAScreenReader) {
  stepper.setAccessibleName(QStringLiteral("Alert when charging reaches 80%"));
  QAccessibleInterface* heard = test::spoken(&stepper);
  EXPECT_EQ(heard->role(), QAccessible::SpinBox);
  EXPECT_EQ(heard->text(QAccessible::Name), stepper.accessibleName());
  EXPECT_EQ(heard->text(QAccessible::Value), QStringLiteral("80"));
  EXPECT_TRUE(heard->state().focusable);
  auto* value = heard->valueInterface();
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->currentValue().toLongLong(), 80);
  EXPECT_EQ(value->minimumValue().toLongLong(), 50);
  EXPECT_EQ(value->maximumValue().toLongLong(), 100);
  EXPECT_EQ(value->minimumStepSize().toLongLong(), 1);
  heard->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
  heard->actionInterface()->doAction(QAccessibleActionInterface::decreaseAction());
  value->setCurrentValue(95);
  EXPECT_EQ(wanted, (std::vector<std::int64_t>{81, 80, 95}));
}

TEST_F(StepperTest, AScreenReaderCannotSetItOutsideTheRange) {
  auto* value = test::spoken(&stepper)->valueInterface();
  for (const double stray : {101.0, 49.0, -1e300, 1e300, std::nan("")}) {
    value->setCurrentValue(stray);
  }
  EXPECT_TRUE(wanted.empty());
}

// The colours inside a cell, away from the shape's corners and the divider.
std::set<QRgb> coloursInside(Stepper& stepper, QPoint middle, double ratio) {
  QImage image(stepper.size() * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::white);
  stepper.render(&image, {}, {}, QWidget::RenderFlags());
  std::set<QRgb> colours;
  const QRect box = QRect(middle - QPoint(8, 8), QSize(16, 16));
  for (int y = qRound(box.top() * ratio); y < qRound(box.bottom() * ratio); ++y) {
    for (int x = qRound(box.left() * ratio); x < qRound(box.right() * ratio); ++x) {
      colours.insert(image.pixel(x, y));
    }
  }
  return colours;
}

TEST_F(StepperTest, DrawsItsSignsOnWholePixels) {
  for (const double ratio : {1.0, 1.25, 2.0}) {
    for (const Step step : {Step::down, Step::up}) {
      EXPECT_EQ(coloursInside(stepper, cell(step), ratio).size(), 2U) << "at " << ratio;
    }
  }
}

TEST_F(StepperTest, DrawsAnInertSignInOneShade) {
  stepper.setValue(100);
  EXPECT_EQ(coloursInside(stepper, cell(Step::up), 1).size(), 2U)
      << "the crossing of its bars is translucent, too";
}

}  // namespace
}  // namespace tollbeam
