#include "colour/Contrast.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

const QColor kBlack(Qt::black);
const QColor kWhite(Qt::white);

TEST(Contrast, RangesFrom1To21) {
  EXPECT_DOUBLE_EQ(contrastRatio(kWhite, kWhite), 1);
  EXPECT_NEAR(contrastRatio(kBlack, kWhite), 21, 1e-9);
  EXPECT_DOUBLE_EQ(contrastRatio(kWhite, kBlack), contrastRatio(kBlack, kWhite));
}

TEST(Contrast, HasThePublishedRatioForAKnownPair) {
  EXPECT_NEAR(contrastRatio(QColor(0x76, 0x76, 0x76), kWhite), 4.54, 0.005);
}

TEST(Contrast, LeavesAColourThatIsReadable) {
  const QColor green(0x17, 0x7A, 0x3C);
  EXPECT_EQ(readable(green, kBlack, kWhite, 4.5).rgb(), green.rgb());
}

TEST(Contrast, MixesInFivePercentStepsUntilReadable) {
  const QColor yellow(0xFF, 0xD0, 0x40);
  const QColor result = readable(yellow, kBlack, kWhite, 4.5);
  EXPECT_GE(contrastRatio(result, kWhite), 4.5);
  int step = 1;
  while (mixed(kBlack, yellow, 0.05 * step).rgb() != result.rgb()) ASSERT_LT(++step, 20);
  EXPECT_LT(contrastRatio(mixed(kBlack, yellow, 0.05 * (step - 1)), kWhite), 4.5);
}

TEST(Contrast, EndsAtTheStrongColourWhenNothingIsReadable) {
  EXPECT_EQ(readable(kWhite, QColor(Qt::lightGray), kWhite, 4.5), QColor(Qt::lightGray));
}

}  // namespace
}  // namespace tollbeam
