#include "platform/freedesktop/appearance/DesktopFont.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace tollbeam {
namespace {

void setSize(QFont& font, double size, bool pixels) {
  if (pixels)
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
  else
    font.setPointSizeF(size);
}

}  // namespace

QFont desktopFont(const Look& look, const QFont& usual) {
  QFont font = usual;
  if (const auto& described = look.font) {
    QStringList families;
    for (const auto& family : described->families) families << QString::fromStdString(family);
    if (!families.isEmpty()) font.setFamilies(families);
    font.setWeight(static_cast<QFont::Weight>(described->weight));
    font.setItalic(described->italic);
    if (described->stretch != 100) font.setStretch(described->stretch);
    if (described->size) setSize(font, *described->size, described->sizeIsPixels);
  }
  if (look.textScale != 1) {
    const bool pixels = font.pixelSize() > 0;
    setSize(font, (pixels ? font.pixelSize() : font.pointSizeF()) * look.textScale, pixels);
  }
  return font;
}

}  // namespace tollbeam
