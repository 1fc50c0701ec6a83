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
// A symbol beside text grows with the text: one as tall as a tall panel would dwarf the text.
constexpr double kSymbolToText = 1.9;

// Text with every digit in a cell as wide as the widest. Qt offers fonts' tabular figures only from
// 6.7 on.
class TabularText {
 public:
  TabularText(const QString& text, const QFont& font) : text_(text), font_(font), metrics_(font) {
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
      cell_ = std::max(cell_, std::ceil(metrics_.horizontalAdvance(QChar(digit))));
  }

  [[nodiscard]] int width() const {
    return static_cast<int>(std::ceil(walk([](qreal, const QString&) {})));
  }

  void draw(QPainter& painter, int left, int middle) const {
    const auto digits = metrics_.tightBoundingRect(QStringLiteral("0"));
    const auto baseline = std::round(middle + digits.height() / 2.0);
    painter.setFont(font_);
    walk([&](qreal x, const QString& run) { painter.drawText(QPointF(left + x, baseline), run); });
  }

 private:
  static bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

  // Calls `place` with the left end of each run and the run; returns the right end of the last. A
  // run is a single digit, or all between two digits, which keeps its kerning.
  qreal walk(const auto& place) const {
    qreal x = 0;
    for (qsizetype i = 0, end = 0; i < text_.size(); i = end) {
      end = i + 1;
      while (!isDigit(text_[i]) && end < text_.size() && !isDigit(text_[end])) ++end;
      const QString run = text_.mid(i, end - i);
      const qreal advance = metrics_.horizontalAdvance(run);
      const qreal room = isDigit(text_[i]) ? cell_ : advance;
      place(x + std::floor((room - advance) / 2), run);
      x += room;
    }
    return x;
  }

  QString text_;
  QFont font_;
  QFontMetricsF metrics_;
  qreal cell_ = 0;
};

int symbolSide(const StatusPicture& picture) {
  const int fitting = static_cast<int>(kSymbolToText * picture.font.pixelSize());
  const int room = picture.text.isEmpty() ? picture.height : std::min(picture.height, fitting);
  return std::min(Symbols::crispSide(room), picture.height);
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
  QPainter painter(&image);
  painter.setPen(colour);

  const int side = symbolSide(shown);
  const auto drawing = symbols.image(symbol, side, colour);
  const int top = (height - side) / 2;
  // A host that gives too much width gets everything in the middle.
  const int left = (width - shown.width(symbols)) / 2;
  if (shown.text.isEmpty()) {
    if (drawing) painter.drawImage(left, top, *drawing);
    return image;
  }
  const TabularText words(text, font);
  const int first = left + scaled(kMargin, scale);
  const int gap = drawing ? scaled(kGap, scale) : 0;
  const bool mirrored = QGuiApplication::isRightToLeft();
  words.draw(painter, mirrored || !drawing ? first : first + side + gap, top + side / 2);
  if (drawing) painter.drawImage(mirrored ? first + words.width() + gap : first, top, *drawing);
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

QColor colourOn(const QColor& background) {
  constexpr QColor kOnLightPanel(0x1b, 0x1e, 0x23);
  const bool light =
      contrastRatio(kOnDarkPanel, background) > contrastRatio(kOnLightPanel, background);
  return light ? kOnDarkPanel : kOnLightPanel;
}

}  // namespace tollbeam
