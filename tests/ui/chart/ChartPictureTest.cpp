#include "ui/chart/ChartPicture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>

#include "recorded/RecordedPlatform.h"

namespace tollbeam {
namespace {

constexpr Date kNow{1763648400};  // Thursday, 14:20
constexpr double kDay = 86400;
constexpr QRectF kArea(0, 0, 308, 110);

class ChartPictureTest : public testing::Test {
 protected:
  // The number of pixel rows below its area in which the chart has painted.
  int rowsBelow(const char* language, bool hours, double ratio) {
    const Date from = kNow - (hours ? 1 : 7) * kDay;
    const ChartPicture picture(
        {.points = {{0, from, 80, 0}, {1, kNow, 20, 0}}, .from = from, .now = kNow, .hours = hours},
        kArea, Qt::LeftToRight, style, calendar, QLocale(QString::fromUtf8(language)));
    QImage image(QSizeF(308 * ratio, 140 * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.paint(painter, style, QRect(0, 0, 308, 140));
    painter.end();
    int rows = 0;
    for (int y = qRound(kArea.bottom() * ratio); y < image.height(); ++y) {
      int ink = 0;
      for (int x = 0; x < image.width(); ++x) ink = std::max(ink, qAlpha(image.pixel(x, y)));
      rows += ink > 40;
    }
    return rows;
  }

  RecordedAppearance appearance;
  Style style{appearance};
  RecordedCalendar calendar;
};

TEST_F(ChartPictureTest, LeavesRoomForDeepLetters) {
  for (const char* language : {"en_GB", "ar_EG", "fa_IR", "hi_IN", "th_TH", "fr_FR", "pl_PL"}) {
    for (const bool hours : {true, false}) {
      for (const double ratio : {1.0, 2.0}) {
        EXPECT_EQ(rowsBelow(language, hours, ratio), 0)
            << language << (hours ? " hours" : " days") << " at " << ratio;
      }
    }
  }
}

}  // namespace
}  // namespace tollbeam
