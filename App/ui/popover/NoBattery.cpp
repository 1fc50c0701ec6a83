#include "ui/popover/NoBattery.h"

#include <QPainter>

#include "resources/Symbols.h"
#include "texts/Translated.h"

namespace tollbeam {

namespace {

constexpr double kPicture = 48;
// Of the picture's height the line of a font of 36 points; the rest is empty and counts for
// nothing.
constexpr double kSymbol = 36;
constexpr double kAround = 20;
constexpr double kBetween = 8;

class EmptyBattery final : public QWidget {
 public:
  EmptyBattery(const Style& style, QWidget* parent) : QWidget(parent), style_(style) {
    connect(&style_, &Style::changed, this, &EmptyBattery::restyle);
    restyle();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    const int side = qRound(height() * ratio);
    auto picture = Symbols().image(QStringLiteral("battery.0"), side, style_.colours().secondary);
    if (!picture) return;
    picture->setDevicePixelRatio(ratio);
    const int left = (width() - height()) / 2;  // on a whole pixel, to stay sharp
    painter.drawImage(QPoint(left, 0), *picture);
  }

 private:
  void restyle() {
    setFixedHeight(style_.px(kPicture));
    update();
  }

  const Style& style_;
};

}  // namespace

NoBattery::NoBattery(const Style& style, QWidget* parent)
    : QWidget(parent),
      style_(style),
      symbol_(new EmptyBattery(style, this)),
      headline_(new Text(style, Role::headline, Ink::primary, this)),
      caption_(new Text(style, Role::caption, Ink::secondary, this)),
      column_(new QVBoxLayout(this)) {
  headline_->setText(translated("No battery found"));
  headline_->setBreaks(Breaks::balanced);
  headline_->setAlignment(Qt::AlignCenter);
  caption_->setText(tr("This Mac does not report a battery, so Tollbeam stays quiet."));
  caption_->setBreaks(Breaks::afterComma);
  caption_->setAlignment(Qt::AlignCenter);
  column_->setSpacing(0);
  connect(&style_, &Style::changed, this, &NoBattery::restyle);
  restyle();
}

void NoBattery::restyle() {
  while (QLayoutItem* item = column_->takeAt(0)) delete item;
  const int around = style_.px(kAround);
  const int between = style_.px(kBetween);
  const int empty = (style_.px(kPicture) - style_.px(kSymbol)) / 2;
  column_->setContentsMargins(0, around - empty, 0, around);
  column_->addWidget(symbol_);
  column_->addSpacing(between - empty);
  column_->addWidget(headline_);
  column_->addSpacing(between);
  column_->addWidget(caption_);
  updateGeometry();
}

}  // namespace tollbeam
