#include "platform/freedesktop/statusbar/sni/StatusFace.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/freedesktop/statusbar/picture/StatusPicture.h"

namespace tollbeam {
namespace {

// Every size that panels usually ask for: some take the largest, some the nearest.
constexpr std::array kSizes{16, 22, 24, 32, 48, 64};
// Text in a wide picture grows with it: about 13 pixels in a picture of 22.
constexpr double kTextToHeight = 0.6;

// Makes "9%" as wide as "10%": a figure space is as wide as a digit. A third digit is rare.
QString padded(QString text) {
  const bool oneDigit = text.size() > 1 && text[0].isDigit() && text[1] == QLatin1Char('%');
  return oneDigit ? text.prepend(QChar(0x2007)) : text;
}

SniToolTip toolTipFor(const QString& text, const StatusHostTraits& traits) {
  if (traits.toolTip == ToolTipPlace::AllInTitle) return {{}, {}, text, {}};
  SniToolTip toolTip{{}, {}, {}, text};
  if (traits.toolTip == ToolTipPlace::TitleAndDescription) {
    toolTip.title = text.section(QLatin1Char('\n'), 0, 0);
    toolTip.description = text.section(QLatin1Char('\n'), 1);
  }
  // All hosts show a title alone as plain text; beside a description some read it as markup.
  if (traits.titleIsMarkup && !toolTip.description.isEmpty())
    toolTip.title = toolTip.title.toHtmlEscaped();
  if (traits.descriptionIsMarkup) toolTip.description = toolTip.description.toHtmlEscaped();
  return toolTip;
}

SniPixmaps picturesFor(const QString& symbol, const QString& text, const QColor& colour,
                       Symbols& symbols) {
  SniPixmaps pictures;
  for (const int size : kSizes) {
    if (text.isEmpty()) {
      if (const auto image = symbols.image(symbol, size, colour)) pictures << toSniPixmap(*image);
      continue;
    }
    StatusPicture picture{symbol, text, statusFont(), colour, size, size / 22.0};
    picture.font.setPixelSize(static_cast<int>(std::lround(size * kTextToHeight)));
    pictures << toSniPixmap(picture.paint(symbols, picture.width(symbols)));
  }
  return pictures;
}

}  // namespace

QString firstSymbol(const StatusItemContent& content, const Symbols& symbols) {
  for (const auto& name : content.symbolNames) {
    auto symbol = QString::fromStdString(name);
    if (symbols.contains(symbol)) return symbol;
  }
  return {};
}

QString besideText(const StatusItemContent& content) {
  return QString::fromStdString(content.title).trimmed();
}

StatusFace faceFor(const StatusItemContent& content, const StatusHostTraits& traits,
                   const QString& iconThemePath, const QColor& colour, Symbols& symbols) {
  StatusFace face;
  const auto symbol = firstSymbol(content, symbols);
  const auto text = besideText(content);
  if (traits.recoloursIcon && !iconThemePath.isEmpty()) {
    if (!symbol.isEmpty())
      face.iconName = QStringLiteral("tollbeam-%1-symbolic")
                          .arg(symbol)
                          .replace(QLatin1Char('.'), QLatin1Char('-'));
    face.iconThemePath = iconThemePath;
  }
  face.icon = picturesFor(symbol, traits.widePixmap ? text : QString(), colour, symbols);
  face.accessibleDescription = QString::fromStdString(content.accessibilityDescription);
  face.toolTip = toolTipFor(QString::fromStdString(content.toolTip), traits);
  if (traits.label) face.label = padded(text);
  return face;
}

}  // namespace tollbeam
