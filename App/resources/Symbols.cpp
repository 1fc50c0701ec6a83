#include "resources/Symbols.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <array>

// The linker drops a static library's resources unless they are referenced. Qt's macro must be
// outside any namespace.
static void initSymbolResource() { Q_INIT_RESOURCE(symbols); }

namespace tollbeam {
namespace {

// In order of preference where two grids fit equally: 48 is three times the 16 drawing.
constexpr std::array kGrids{16, 22, 24};
constexpr qsizetype kMostKept = 64;

QString path(const QString& name, int grid) {
  return QStringLiteral(":/symbols/%1/%2.svg").arg(grid).arg(name);
}

}  // namespace

Symbols::Symbols() { initSymbolResource(); }

bool Symbols::contains(const QString& name) const {
  return !name.isEmpty() && QFile::exists(path(name, kGrids.front()));
}

int Symbols::crispSide(int side) {
  int best = kGrids.front();
  for (const int grid : kGrids) best = std::max(best, side / grid * grid);
  return best;
}

std::optional<QImage> Symbols::image(const QString& name, int side, const QColor& colour) {
  if (side <= 0 || !contains(name)) return std::nullopt;
  const auto key = QStringLiteral("%1 %2 %3").arg(colour.rgba()).arg(side).arg(name);
  if (const auto kept = cache_.constFind(key); kept != cache_.constEnd()) return *kept;

  const int crisp = std::min(crispSide(side), side);
  const auto* grid = std::find_if(kGrids.begin(), kGrids.end(),
                                  [crisp](int candidate) { return crisp % candidate == 0; });
  QSvgRenderer renderer(path(name, grid != kGrids.end() ? *grid : kGrids.front()));
  if (!renderer.isValid()) return std::nullopt;
  QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  const int margin = (side - crisp) / 2;
  renderer.render(&painter, QRectF(margin, margin, crisp, crisp));
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(image.rect(), colour);
  painter.end();

  if (cache_.size() >= kMostKept) cache_.clear();
  cache_.insert(key, image);
  return image;
}

}  // namespace tollbeam
