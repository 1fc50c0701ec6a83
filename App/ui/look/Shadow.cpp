#include "ui/look/Shadow.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tollbeam {

namespace {

// A wide layer far below the body gives depth, a narrow one close to it an edge.
struct Layer {
  double down;
  double blur;
  double onLight;
  double onDark;
};
constexpr std::array<Layer, 2> kLayers{{{10, 28, 0.20, 0.45}, {2, 6, 0.10, 0.30}}};
constexpr const Layer& kWidest = kLayers[0];

// How far from a corner of the body the shadow is not yet straight.
constexpr double kCorner = kWidest.blur + kPopoverRadius;

// One pass of a running mean over `count` values that lie `step` apart. `line` holds as many.
void blurLine(float* values, int step, int count, int reach, float* line) {
  for (int i = 0; i < count; ++i) line[i] = values[i * step];
  const auto span = static_cast<float>(2 * reach + 1);
  double sum = 0;
  for (int i = 0; i < std::min(reach, count); ++i) sum += line[i];
  for (int i = 0; i < count; ++i) {
    if (i + reach < count) sum += line[i + reach];
    if (i > reach) sum -= line[i - reach - 1];
    values[i * step] = static_cast<float>(sum) / span;
  }
}

// Three running means come close to a Gaussian and take no longer for a wider one.
QList<float> blurredBody(QSize size, const QRectF& body, double radius, double sigma) {
  QImage mask(size, QImage::Format_ARGB32_Premultiplied);
  mask.fill(Qt::transparent);
  QPainter painter(&mask);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawRoundedRect(body, radius, radius);
  painter.end();
  const int width = size.width();
  const int height = size.height();
  QList<float> values(width * height);
  float* first = values.data();
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      first[y * width + x] = static_cast<float>(qAlpha(mask.pixel(x, y))) / 255;
    }
  }
  const int reach = qRound((sigma * 1.88 - 1) / 2);
  QList<float> line(std::max(width, height));
  for (int pass = 0; pass < 3; ++pass) {
    for (int y = 0; y < height; ++y) blurLine(first + y * width, 1, width, reach, line.data());
    for (int x = 0; x < width; ++x) blurLine(first + x, width, height, reach, line.data());
  }
  return values;
}

}  // namespace

QMargins Shadow::reach(const Style& style) {
  if (style.colours().highContrast) return {};
  const int sides = style.px(kWidest.blur);
  return {sides, style.px(kWidest.blur - kWidest.down), sides,
          style.px(kWidest.blur + kWidest.down)};
}

void Shadow::make(const Style& style, double ratio) {
  dark_ = style.colours().dark;
  scale_ = style.scale() * ratio;
  const QMarginsF margins = QMarginsF(reach(style)) * ratio;
  const double side = std::ceil(2 * kCorner * scale_) + 1;
  const QSize size(static_cast<int>(std::ceil(side + margins.left() + margins.right())),
                   static_cast<int>(std::ceil(side + margins.top() + margins.bottom())));
  const QRectF body(margins.left(), margins.top(), side, side);

  QList<float> light(size.width() * size.height(), 1);
  for (const Layer& layer : kLayers) {
    const auto shade = blurredBody(size, body.translated(0, layer.down * scale_),
                                   kPopoverRadius * scale_, layer.blur / 2 * scale_);
    const auto strength = static_cast<float>(dark_ ? layer.onDark : layer.onLight);
    for (qsizetype i = 0; i < light.size(); ++i) light[i] *= 1 - strength * shade[i];
  }
  // A picture that holds only alpha paints in black.
  picture_ = QImage(size, QImage::Format_Alpha8);
  picture_.setDevicePixelRatio(ratio);
  const float* next = light.constData();
  for (int y = 0; y < size.height(); ++y) {
    auto* row = picture_.scanLine(y);
    for (int x = 0; x < size.width(); ++x) {
      row[x] = static_cast<uchar>(std::lround((1 - *next++) * 255));
    }
  }
}

void Shadow::paint(QPainter& painter, const QRect& body, const QRect& exposed, const Style& style) {
  const double ratio = painter.device()->devicePixelRatioF();
  if (picture_.isNull() || dark_ != style.colours().dark || scale_ != style.scale() * ratio) {
    make(style, ratio);
  }
  const QMargins margins = reach(style);
  const QRect all = body.marginsAdded(margins);
  const double corner = kCorner * style.scale();
  const QSizeF size = picture_.deviceIndependentSize();
  // The edges of the pieces, in the window (x, y) and in the picture (u, v).
  const auto cuts = [corner](double from, double before, double after, double length) {
    return std::array<double, 4>{from, from + before + corner, from + length - after - corner,
                                 from + length};
  };
  const auto xs = cuts(all.left(), margins.left(), margins.right(), all.width());
  const auto ys = cuts(all.top(), margins.top(), margins.bottom(), all.height());
  const auto us = cuts(0, margins.left(), margins.right(), size.width());
  const auto vs = cuts(0, margins.top(), margins.bottom(), size.height());
  for (std::size_t row = 0; row < 3; ++row) {
    for (std::size_t column = 0; column < 3; ++column) {
      const QRectF target(QPointF(xs[column], ys[row]), QPointF(xs[column + 1], ys[row + 1]));
      const bool hidden = row == 1 && column == 1;
      if (hidden || !target.intersects(exposed)) continue;
      const QRectF source(QPointF(us[column], vs[row]) * ratio,
                          QPointF(us[column + 1], vs[row + 1]) * ratio);
      painter.drawImage(target, picture_, source);
    }
  }
}

}  // namespace tollbeam
