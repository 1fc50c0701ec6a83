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

// In the order of Role.
constexpr Step kSteps[] = {
    {1.00, QFont::DemiBold, 18}, {1.00, QFont::Normal, 18}, {1.00, QFont::Medium, 18},
    {0.92, QFont::Normal, 16},   {0.92, QFont::Medium, 16}, {0.85, QFont::Normal, 14},
    {0.85, QFont::Medium, 14},   {0.77, QFont::Normal, 13},
};

constexpr const Step& step(Role role) { return kSteps[static_cast<std::size_t>(role)]; }

// In pixels; keeps small print legible under a small system font.
constexpr double kSmallest = 9;

// Sets the size in points, because a size in pixels cannot be a fraction.
void setPixels(QFont& font, const QFont& base, double pixels) {
  const double pointsPerPixel = base.pixelSize() > 0
                                    ? QFontInfo(base).pointSizeF() / base.pixelSize()
                                    : base.pointSizeF() / pixelSize(base);
  font.setPointSizeF(pixels * pointsPerPixel);
}

}  // namespace

double pixelSize(const QFont& base) {
  if (base.pixelSize() > 0) return base.pixelSize();
  // QFontInfo rounds to whole pixels, which matters little in a big font.
  QFont big(base);
  constexpr double kBig = 720;
  big.setPointSizeF(kBig);
  return base.pointSizeF() * QFontInfo(big).pixelSize() / kBig;
}

QFont font(Role role, const QFont& base) {
  const Step& s = step(role);
  QFont result(base);
  setPixels(result, base, std::max(s.share * pixelSize(base), kSmallest));
  result.setWeight(s.weight);
  return result;
}

bool hasMedium(const QFont& font) {
  QFont medium(font);
  medium.setWeight(QFont::Medium);
  // QFontInfo's weight is the requested one; the style is that of the font that was found.
  const QFontInfo found(medium);
  return QFontDatabase::weight(found.family(), found.styleName()) >= QFont::Medium;
}

QFont ringFont(const QFont& base, double scale) {
  constexpr double kPixels = 28;
  constexpr double kTracking = 98;
  // Makes up for the thicker stroke around each digit.
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
