#include "ui/controls/TextLine.h"

#include <gtest/gtest.h>

#include <QImage>

#include "platform/recorded/RecordedPlatform.h"
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

TEST(TextLine, LeavesNoLetterBelowItsLine) {
  RecordedAppearance appearance;
  const Style style(appearance);
  for (const Role role :
       {Role::headline, Role::body, Role::callout, Role::caption, Role::caption2}) {
    for (const double ratio : {1.0, 1.25, 2.0}) {
      const int line = style.lineHeight(role);
      QImage image(QSize(200, 2 * line) * ratio, QImage::Format_ARGB32_Premultiplied);
      image.setDevicePixelRatio(ratio);
      image.fill(Qt::transparent);
      QPainter painter(&image);
      painter.setPen(Qt::black);
      paintLine(painter, {4, 0}, line, QStringLiteral("gjpqy"), style.font(role),
                Figures::proportional);
      painter.end();
      const int lowest = lowestInk(image);
      EXPECT_GT(lowest, line * ratio / 2);
      EXPECT_LT(lowest, line * ratio) << static_cast<int>(role) << " at " << ratio;
    }
  }
}

}  // namespace
}  // namespace tollbeam
