#include "platform/freedesktop/statusbar/picture/StatusPicture.h"

#include <gtest/gtest.h>

#include "colour/Contrast.h"

namespace tollbeam {
namespace {

StatusPicture picture(const char* text, int height = 22) {
  QFont font = statusFont();
  font.setPixelSize(13);
  return {QStringLiteral("battery.75"), QString::fromUtf8(text), font, Qt::black, height, 1};
}

/// The part that is not transparent.
QRect inked(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) > 64) ink |= QRect(x, y, 1, 1);
    }
  }
  return ink;
}

TEST(StatusPicture, KeepsItsWidthWhileDigitsChange) {
  const Symbols symbols;
  const int width = picture("64% · 3:47").width(symbols);
  for (const char* text : {"11% · 1:11", "98% · 0:00", "40% · 7:08"})
    EXPECT_EQ(picture(text).width(symbols), width) << text;
}

TEST(StatusPicture, IsASquareWithoutText) {
  Symbols symbols;
  EXPECT_EQ(picture("").width(symbols), 22);
  const auto image = picture("").paint(symbols, 22);
  EXPECT_EQ(image, *symbols.image(QStringLiteral("battery.75"), 22, Qt::black));
}

TEST(StatusPicture, IsCentredInATallPanel) {
  Symbols symbols;
  const auto wide = picture("64% · 3:47", 48);
  const auto ink = inked(wide.paint(symbols, wide.width(symbols)));
  EXPECT_LE(ink.height(), 14);
  EXPECT_LE(std::abs((ink.top() + ink.bottom() + 1) - 48), 2);
}

TEST(StatusPicture, OmitsTheTextWhereThereIsNoRoom) {
  Symbols symbols;
  const auto narrow = picture("64% · 3:47").paint(symbols, 30);
  EXPECT_EQ(narrow.size(), QSize(30, 22));
  const auto ink = inked(narrow);
  EXPECT_GE(ink.left(), 4);
  EXPECT_LE(ink.right(), 26);
}

TEST(StatusPicture, FillsItsWidth) {
  Symbols symbols;
  const auto wide = picture("100% · 12:35");
  const int width = wide.width(symbols);
  const auto ink = inked(wide.paint(symbols, width));
  EXPECT_GE(ink.left(), 1);
  EXPECT_LE(ink.right(), width - 2);
  EXPECT_GT(ink.right(), width - 8) << "and reaches its right end";
}

TEST(StatusPicture, ShowsTheTextAloneWithoutASymbol) {
  Symbols symbols;
  auto wordOnly = picture("64%");
  wordOnly.symbol.clear();
  EXPECT_LT(wordOnly.width(symbols), picture("64%").width(symbols));
  EXPECT_FALSE(inked(wordOnly.paint(symbols, wordOnly.width(symbols))).isEmpty());
}

TEST(ColourOn, HasContrastWithAnyBackground) {
  for (const QColor& ground : {QColor(Qt::black), QColor(Qt::white), QColor(0x80, 0x80, 0x80),
                               QColor(0x33, 0x66, 0x99), QColor(0xd6, 0xd2, 0x6a)})
    EXPECT_GE(contrastRatio(colourOn(ground), ground), 4) << ground.name().toStdString();
  EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.01);
}

}  // namespace
}  // namespace tollbeam
