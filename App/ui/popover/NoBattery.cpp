#include "ui/popover/NoBattery.h"

#include <QPainter>
#include <QVBoxLayout>

#include "resources/Symbols.h"
#include "texts/Translated.h"
#include "ui/controls/Text.h"

namespace tollbeam {

namespace {

constexpr double kPicture = 48;
// The part of the picture that the symbol fills. The empty edges above and below it do not count as
// distance.
constexpr double kSymbol = 36;
constexpr double kAround = 20;
constexpr double kBetween = 8;

class EmptyBattery final : public QWidget {
 public:
  EmptyBattery(const Style& style, QWidget* parent) : QWidget(parent), style_(style) {
    style_.follow(this, [this] {
      setFixedHeight(style_.px(kPicture));
      update();
    });
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
  const Style& style_;
};

}  // namespace

NoBattery::NoBattery(const Style& style, QWidget* parent) : QWidget(parent) {
  auto* symbol = new EmptyBattery(style, this);
  auto* headline = new Text(style, Role::headline, Ink::primary, this);
  headline->setText(translated("No battery found"));
  headline->setBreaks(Breaks::balanced);
  headline->setAlignment(Qt::AlignCenter);
  auto* caption = new Text(style, Role::caption, Ink::secondary, this);
  caption->setText(tr("This Mac does not report a battery, so Tollbeam stays quiet."));
  caption->setBreaks(Breaks::afterComma);
  caption->setAlignment(Qt::AlignCenter);
  auto* column = new QVBoxLayout(this);
  column->setSpacing(0);
  style.follow(this, [=, this, &style] {
    while (QLayoutItem* item = column->takeAt(0)) delete item;
    const int around = style.px(kAround);
    const int between = style.px(kBetween);
    const int empty = (style.px(kPicture) - style.px(kSymbol)) / 2;
    column->setContentsMargins(0, around - empty, 0, around);
    column->addWidget(symbol);
    column->addSpacing(between - empty);
    column->addWidget(headline);
    column->addSpacing(between);
    column->addWidget(caption);
    updateGeometry();
  });
}

}  // namespace tollbeam
