#include "ui/controls/TextLine.h"

#include <gtest/gtest.h>

#include <QImage>

#include "recorded/RecordedPlatform.h"
#include "support/Widgets.h"
#include "ui/look/Style.h"

namespace tollbeam {
namespace {

// The lowest row of the image that holds ink, -1 without any.
int lowestInk(const QImage& image) {
  for (int y = image.height() - 1; y >= 0; --y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAlpha(image.pixel(x, y)) > 40) return y;
    }
  }
  return -1;
}

int lowestInkOfLine(int line, const QFont& font, double ratio) {
  QImage image(QSize(200, 2 * line) * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setPen(Qt::black);
  paintLine(painter, {4, 0}, line, QStringLiteral("gjpqy"), font, Figures::proportional);
  painter.end();
  return lowestInk(image);
}

TEST(TextLine, PaintsNoLetterBelowItsLine) {
  const QFont before = QApplication::font();
  for (int size = 10; size < 25; ++size) {
    QFont base(before);
    base.setPixelSize(size);
    QApplication::setFont(base);
    RecordedAppearance appearance;
    const Style style(appearance);
    for (const Role role :
         {Role::headline, Role::body, Role::callout, Role::caption, Role::caption2}) {
      for (const double ratio : {1.0, 1.25, 2.0}) {
        const int line = style.lineHeight(role);
        const int lowest = lowestInkOfLine(line, style.font(role), ratio);
        EXPECT_GT(lowest, line * ratio / 2);
        EXPECT_LT(lowest, line * ratio)
            << size << " px, role " << static_cast<int>(role) << " at " << ratio;
      }
    }
  }
  QApplication::setFont(before);
}

TEST(TextLine, GivesAllTabularDigitsOneWidth) {
  const QFont font;
  EXPECT_DOUBLE_EQ(tabularWidth(QStringLiteral("11:11"), font),
                   tabularWidth(QStringLiteral("08:46"), font));
  EXPECT_GT(tabularWidth(QStringLiteral("11:11"), font),
            tabularWidth(QStringLiteral("1:11"), font));
}

}  // namespace
}  // namespace tollbeam
