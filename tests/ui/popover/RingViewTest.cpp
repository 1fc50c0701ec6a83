#include "ui/popover/RingView.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTest>
#include <cmath>
#include <numbers>

#include "recorded/RecordedPlatform.h"
#include "support/WaitFor.h"

namespace tollbeam {
namespace {

class RingViewTest : public testing::Test {
 protected:
  RingViewTest() { ring.resize(ring.sizeHint()); }

  QImage picture() {
    QImage image(ring.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    ring.render(&image, {}, {}, {});
    return image;
  }
  // The middle of the ring at an hour of a clock face.
  static QColor at(const QImage& image, double hour) {
    const double angle = hour / 12 * 2 * std::numbers::pi;
    const double scale = image.width() / 104.0;
    return image.pixelColor(static_cast<int>((52 + 46 * std::sin(angle)) * scale),
                            static_cast<int>((52 - 46 * std::cos(angle)) * scale));
  }
  QColor track() {
    ring.setCharge(0, Tint::accent);
    return at(picture(), 6);
  }

  RecordedAppearance appearance;
  Style style{appearance};
  RingView ring{style};
};

TEST_F(RingViewTest, FillsClockwiseFromTheTop) {
  const QColor empty = track();
  ring.setCharge(25, Tint::red);
  const QImage image = picture();
  EXPECT_EQ(at(image, 1.5), style.colours().red);
  EXPECT_EQ(at(image, 2.5), style.colours().red);
  EXPECT_EQ(at(image, 4), empty);
  EXPECT_EQ(at(image, 6), empty);
  EXPECT_EQ(at(image, 10.5), empty);
}

TEST_F(RingViewTest, HasNoArcWhenEmptyAndACircleWhenFull) {
  const QColor empty = track();
  QImage image = picture();
  for (double hour = 0; hour < 12; hour += 0.25) ASSERT_EQ(at(image, hour), empty) << hour;
  ring.setCharge(100, Tint::green);
  image = picture();
  for (double hour = 0; hour < 12; hour += 0.25) {
    ASSERT_EQ(at(image, hour), style.colours().green) << hour;
  }
}

TEST_F(RingViewTest, IsDrawnWithAPenOfElevenOfItsHundredAndFour) {
  ring.resize(1040, 1040);
  ring.setCharge(100, Tint::green);
  const QImage image = picture();
  int first = 0;
  int count = 0;
  for (int x = 520; x < 1040; ++x) {
    if (image.pixelColor(x, 520) != style.colours().green) continue;
    if (count++ == 0) first = x;
  }
  EXPECT_NEAR(count, 110, 1);
  EXPECT_NEAR(first, 520 + 460 - 55, 1);
}

TEST_F(RingViewTest, HasRoundEnds) {
  ring.setCharge(50, Tint::accent);
  const QImage image = picture();
  EXPECT_EQ(at(image, 11.9), style.colours().accent) << "before the top";
  EXPECT_EQ(at(image, 6.1), style.colours().accent) << "beyond the half";
}

TEST_F(RingViewTest, KeepsThePercentageInsideTheRing) {
  for (const int percent : {0, 9, 44, 88, 100}) {
    ring.setCharge(percent, Tint::accent);
    const QImage image = picture();
    const QColor ink = style.colours().primary;
    int inked = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) != ink) continue;
        ++inked;
        const double away =
            std::hypot(x + 0.5 - image.width() / 2.0, y + 0.5 - image.height() / 2.0);
        ASSERT_LT(away, 40 * image.width() / 104.0) << percent;
      }
    }
    EXPECT_GT(inked, 50) << percent;
  }
}

TEST_F(RingViewTest, JumpsWhileHiddenAndGlidesWhileShown) {
  ring.setCharge(20, Tint::accent);
  const QColor empty = track();
  ring.setCharge(80, Tint::accent);
  EXPECT_EQ(at(picture(), 9), style.colours().accent) << "hidden";
  ring.show();
  ring.setCharge(10, Tint::accent);
  EXPECT_EQ(at(picture(), 9), style.colours().accent) << "on its way";
  EXPECT_TRUE(test::waitFor([&] { return at(picture(), 3) == empty; }));
}

TEST_F(RingViewTest, JumpsWhenAnimationsAreOff) {
  const QColor empty = track();
  appearance.animated = false;
  ring.setCharge(80, Tint::accent);
  ring.show();
  ring.setCharge(10, Tint::accent);
  EXPECT_EQ(at(picture(), 3), empty);
}

}  // namespace
}  // namespace tollbeam
