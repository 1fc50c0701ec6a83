#include "colour/Contrast.h"

#include <algorithm>
#include <cmath>

namespace tollbeam {

namespace {

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

}  // namespace

double relativeLuminance(const QColor& colour) {
  const QColor rgb = colour.toRgb();
  return 0.2126 * linear(rgb.redF()) + 0.7152 * linear(rgb.greenF()) + 0.0722 * linear(rgb.blueF());
}

double contrastRatio(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({relativeLuminance(one), relativeLuminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor mixed(const QColor& colour, const QColor& ground, double share) {
  const auto channel = [share](float a, float b) {
    return std::clamp(static_cast<float>(share * a + (1 - share) * b), 0.0F, 1.0F);
  };
  const QColor a = colour.toRgb();
  const QColor b = ground.toRgb();
  return QColor::fromRgbF(channel(a.redF(), b.redF()), channel(a.greenF(), b.greenF()),
                          channel(a.blueF(), b.blueF()));
}

QColor readable(const QColor& colour, const QColor& strong, const QColor& ground, double ratio) {
  constexpr int kSteps = 20;
  for (int step = 0; step < kSteps; ++step) {
    const QColor candidate = mixed(strong, colour, static_cast<double>(step) / kSteps);
    if (contrastRatio(candidate, ground) >= ratio) return candidate;
  }
  return strong;
}

}  // namespace tollbeam
