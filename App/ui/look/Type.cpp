#include "ui/look/Type.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <algorithm>

namespace tollbeam {

namespace {

struct Step {
  double share;
  QFont::Weight weight;
  int line;
};

Step step(Role role) {
  switch (role) {
    case Role::headline:
      return {1.00, QFont::DemiBold, 18};
    case Role::body:
      return {1.00, QFont::Normal, 18};
    case Role::bodyMedium:
      return {1.00, QFont::Medium, 18};
    case Role::callout:
      return {0.92, QFont::Normal, 16};
    case Role::calloutMedium:
      return {0.92, QFont::Medium, 16};
    case Role::caption:
      return {0.85, QFont::Normal, 14};
    case Role::captionMedium:
      return {0.85, QFont::Medium, 14};
    case Role::caption2:
      return {0.77, QFont::Normal, 13};
  }
  return {1.00, QFont::Normal, 18};
}

// Small print stays legible under a small system font.
constexpr double kSmallest = 9;

// Only points take fractions.
void setPixels(QFont& font, const QFont& base, double pixels) {
  const double pointsPerPixel = base.pixelSize() > 0
                                    ? QFontInfo(base).pointSizeF() / base.pixelSize()
                                    : base.pointSizeF() / pixelSize(base);
  font.setPointSizeF(pixels * pointsPerPixel);
}

}  // namespace

double pixelSize(const QFont& base) {
  if (base.pixelSize() > 0) return base.pixelSize();
  // QFontInfo rounds its pixels to whole ones; a big font's ratio does not suffer from that.
  QFont big(base);
  constexpr double kBig = 720;
  big.setPointSizeF(kBig);
  return base.pointSizeF() * QFontInfo(big).pixelSize() / kBig;
}

QFont font(Role role, const QFont& base) {
  const Step s = step(role);
  QFont result(base);
  setPixels(result, base, std::max(s.share * pixelSize(base), kSmallest));
  result.setWeight(s.weight);
  return result;
}

bool hasMedium(const QFont& font) {
  QFont medium(font);
  medium.setWeight(QFont::Medium);
  // QFontInfo's weight is the one that was asked for; the style is the one that was found.
  const QFontInfo found(medium);
  return QFontDatabase::weight(found.family(), found.styleName()) >= QFont::Medium;
}

QFont ringFont(const QFont& base, double scale) {
  constexpr double kPixels = 28;
  constexpr double kTracking = 98;
  // What the thicker pen adds to each digit.
  constexpr double kTrackingOfRegular = 104;
  QFont result(base);
  setPixels(result, base, kPixels * scale);
  result.setWeight(QFont::Medium);
  result.setLetterSpacing(QFont::PercentageSpacing,
                          hasMedium(result) ? kTracking : kTrackingOfRegular);
  return result;
}

int lineHeight(Role role) { return step(role).line; }

}  // namespace tollbeam
