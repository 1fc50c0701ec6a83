#include "platform/freedesktop/statusbar/picture/StatusPicture.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "colour/Contrast.h"

namespace tollbeam {
namespace {

constexpr int kGap = 6;
constexpr int kMargin = 2;
// A symbol beside text grows with the text, not with the panel: on a tall panel it would dwarf it.
constexpr double kSymbolToText = 1.9;

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// Text with every digit in a cell as wide as the widest. Qt gives fonts' tabular figures only from
// 6.7 on.
class TabularText {
 public:
  TabularText(const QString& text, const QFont& font) : text_(text), font_(font), metrics_(font) {
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
      cell_ = std::max(cell_, metrics_.horizontalAdvance(QChar(digit)));
    cell_ = std::ceil(cell_);
  }

  [[nodiscard]] int width() const {
    return static_cast<int>(std::ceil(walk([](qreal, const QString&) {})));
  }

  void draw(QPainter& painter, int left, int middle) const {
    const auto digits = metrics_.tightBoundingRect(QStringLiteral("0"));
    const int baseline = static_cast<int>(std::lround(middle + digits.height() / 2.0));
    painter.setFont(font_);
    walk([&](qreal x, const QString& run) { painter.drawText(QPointF(left + x, baseline), run); });
  }

 private:
  // Calls back with each run and where it begins; returns where the last one ends. A run is a
  // single digit, or what stands between digits, which keeps its kerning.
  template <typename Place>
  qreal walk(Place place) const {
    qreal x = 0;
    for (qsizetype i = 0; i < text_.size();) {
      qsizetype end = i + 1;
      if (isDigit(text_[i])) {
        const QString digit = text_.mid(i, 1);
        place(x + std::floor((cell_ - metrics_.horizontalAdvance(digit)) / 2), digit);
        x += cell_;
      } else {
        while (end < text_.size() && !isDigit(text_[end])) ++end;
        const QString run = text_.mid(i, end - i);
        place(x, run);
        x += metrics_.horizontalAdvance(run);
      }
      i = end;
    }
    return x;
  }

  QString text_;
  QFont font_;
  QFontMetricsF metrics_;
  qreal cell_ = 0;
};

int symbolSide(const StatusPicture& picture) {
  if (picture.text.isEmpty()) return std::min(Symbols::crispSide(picture.height), picture.height);
  const double fitting = kSymbolToText * picture.font.pixelSize();
  return std::min(Symbols::crispSide(std::min(picture.height, static_cast<int>(fitting))),
                  picture.height);
}

int scaled(int logical, double scale) { return static_cast<int>(std::lround(logical * scale)); }

}  // namespace

int StatusPicture::width(const Symbols& symbols) const {
  const int side = symbols.contains(symbol) ? symbolSide(*this) : 0;
  if (text.isEmpty()) return std::max(side, 1);
  const int gap = side > 0 ? scaled(kGap, scale) : 0;
  return side + gap + TabularText(text, font).width() + 2 * scaled(kMargin, scale);
}

QImage StatusPicture::paint(Symbols& symbols, int width) const {
  StatusPicture shown = *this;
  // A panel that divides its room by shapes rounds; that may cost the margins, not the text.
  if (width < this->width(symbols) - 2 * scaled(kMargin, scale)) shown.text.clear();
  QImage image(std::max(width, 1), std::max(height, 1), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);

  const int side = symbolSide(shown);
  const auto drawing = symbols.image(symbol, side, colour);
  // A narrow host gets the symbol in its middle.
  const int content = shown.width(symbols);
  int left = (width - content) / 2 + (shown.text.isEmpty() ? 0 : scaled(kMargin, scale));
  const int top = (height - side) / 2;
  const bool mirrored = QGuiApplication::isRightToLeft();

  QPainter painter(&image);
  painter.setPen(colour);
  const TabularText words(shown.text, font);
  const int gap = drawing ? scaled(kGap, scale) : 0;
  if (mirrored && !shown.text.isEmpty()) {
    words.draw(painter, left, top + side / 2);
    left += words.width() + gap;
  }
  if (drawing) painter.drawImage(left, top, *drawing);
  if (!mirrored && !shown.text.isEmpty())
    words.draw(painter, left + (drawing ? side : 0) + gap, top + side / 2);
  return image;
}

double statusScale() {
  const auto* screen = QGuiApplication::primaryScreen();
  return screen != nullptr ? screen->devicePixelRatio() : 1;
}

QFont statusFont() {
  QFont font = QGuiApplication::font();
  const auto* screen = QGuiApplication::primaryScreen();
  const double dpi = screen != nullptr ? screen->logicalDotsPerInchY() : 96;
  const double logical = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * dpi / 72;
  font.setPixelSize(std::max(static_cast<int>(std::lround(logical * statusScale())), 6));
  return font;
}

QColor colourOnDark() { return {0xec, 0xee, 0xf1}; }

QColor colourOn(const QColor& background) {
  const QColor dark(0x1b, 0x1e, 0x23);
  return contrastRatio(colourOnDark(), background) > contrastRatio(dark, background)
             ? colourOnDark()
             : dark;
}

}  // namespace tollbeam
