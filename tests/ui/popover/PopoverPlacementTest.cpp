#include "ui/popover/PopoverPlacement.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

const QRect kScreen(0, 0, 1280, 800);
const QSize kSize(340, 600);

TEST(PopoverPlacement, IsBelowATopPanelCentredOnTheItem) {
  EXPECT_EQ(popoverPosition({800, 15}, kScreen, {0, 30, 1280, 770}, kSize), QPoint(630, 38));
}

TEST(PopoverPlacement, IsAboveABottomPanel) {
  EXPECT_EQ(popoverPosition({800, 784}, kScreen, {0, 0, 1280, 768}, kSize), QPoint(630, 160));
}

TEST(PopoverPlacement, IsBesideASidePanel) {
  EXPECT_EQ(popoverPosition({10, 400}, kScreen, {40, 0, 1240, 800}, kSize), QPoint(48, 100));
  EXPECT_EQ(popoverPosition({1270, 400}, kScreen, {0, 0, 1240, 800}, kSize), QPoint(892, 100));
}

TEST(PopoverPlacement, IsEntirelyOnTheScreenInACorner) {
  EXPECT_EQ(popoverPosition({1275, 15}, kScreen, {0, 30, 1280, 770}, kSize), QPoint(932, 38));
  EXPECT_EQ(popoverPosition({3, 15}, kScreen, {0, 30, 1280, 770}, kSize), QPoint(8, 38));
}

TEST(PopoverPlacement, ShowsItsTopWhenItIsTallerThanTheScreen) {
  EXPECT_EQ(popoverPosition({800, 784}, kScreen, {0, 0, 1280, 768}, {340, 900}), QPoint(630, 8));
}

TEST(PopoverPlacement, UsesTheScreenOfTheItem) {
  EXPECT_EQ(popoverPosition({2000, 15}, {1280, 0, 1920, 1080}, {1280, 30, 1920, 1050}, kSize),
            QPoint(1830, 38));
}

TEST(PopoverPlacement, IsAlwaysInsideTheWorkArea) {
  for (int x = 0; x < 1280; x += 7) {
    for (int y = 0; y < 800; y += 7) {
      const QRect at(popoverPosition({x, y}, kScreen, {0, 30, 1280, 770}, kSize), kSize);
      ASSERT_TRUE(QRect(0, 30, 1280, 770).contains(at)) << x << "," << y;
    }
  }
}

}  // namespace
}  // namespace tollbeam
