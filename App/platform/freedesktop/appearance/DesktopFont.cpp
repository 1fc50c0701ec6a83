#include "platform/freedesktop/appearance/DesktopFont.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace tollbeam {
namespace {

void describe(QFont& font, const FontDescription& described) {
  QStringList families;
  for (const auto& family : described.families) families << QString::fromStdString(family);
  if (!families.isEmpty()) font.setFamilies(families);
  font.setWeight(static_cast<QFont::Weight>(described.weight));
  font.setItalic(described.italic);
  if (described.stretch != 100) font.setStretch(described.stretch);
  if (!described.size) return;
  if (described.sizeIsPixels)
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(*described.size))));
  else
    font.setPointSizeF(*described.size);
}

}  // namespace

QFont desktopFont(const Look& look, const QFont& usual) {
  QFont font = usual;
  if (look.font) describe(font, *look.font);
  if (look.textScale != 1) {
    if (font.pixelSize() > 0)
      font.setPixelSize(
          std::max(1, static_cast<int>(std::lround(font.pixelSize() * look.textScale))));
    else
      font.setPointSizeF(font.pointSizeF() * look.textScale);
  }
  return font;
}

}  // namespace tollbeam
