#include "platform/freedesktop/Contrast.h"

#include <algorithm>
#include <cmath>

namespace tollbeam {
namespace {

double luminance(const QColor& colour) {
  const auto linear = [](double c) {
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

}  // namespace

double contrast(const QColor& a, const QColor& b) {
  const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

}  // namespace tollbeam
