#include "ui/look/Style.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <algorithm>

namespace tollbeam {

namespace {

// Up to a system font of this many pixels the measures stay as they are.
constexpr double kNormalFont = 15;

// A desktop may name any size; with more pixels than these no window fits on a screen.
constexpr double kLargestFont = 64;

// Lines of Latin text may be this much closer than their font asks for.
constexpr int kTighter = 2;

QFont bounded(QFont font) {
  const double pixels = pixelSize(font);
  if (pixels <= kLargestFont) return font;
  if (font.pixelSize() > 0) {
    font.setPixelSize(static_cast<int>(kLargestFont));
  } else {
    font.setPointSizeF(font.pointSizeF() * kLargestFont / pixels);
  }
  return font;
}

}  // namespace

Style::Style(Appearance& appearance, QObject* parent) : QObject(parent), appearance_(appearance) {
  qApp->installEventFilter(this);
  changes_ = appearance_.onChange([this] { update(); });
  update();
}

int Style::lineHeight(Role role) const {
  return std::max(px(tollbeam::lineHeight(role)), QFontMetrics(font(role)).height() - kTighter);
}

bool Style::eventFilter(QObject* watched, QEvent* event) {
  if (watched == qApp && (event->type() == QEvent::ApplicationPaletteChange ||
                          event->type() == QEvent::ApplicationFontChange)) {
    update();
  }
  return QObject::eventFilter(watched, event);
}

void Style::update() {
  base_ = bounded(QApplication::font());
  colours_ = coloursOf(QApplication::palette(), appearance_.highContrast());
  scale_ = std::max(1.0, pixelSize(base_) / kNormalFont);
  Q_EMIT changed();
}

}  // namespace tollbeam
