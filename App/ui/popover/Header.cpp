#include "ui/popover/Header.h"

#include <QHBoxLayout>

namespace tollbeam {

namespace {

constexpr double kGap = 16;
constexpr double kBetweenLines = 4;

}  // namespace

Header::Header(const Style& style, QWidget* parent)
    : QWidget(parent),
      ring_(new RingView(style, this)),
      state_(new Text(style, Role::headline, Ink::primary, this)),
      pluggedIn_(new Text(style, Role::caption, Ink::secondary, this)),
      banner_(new SnoozeBanner(style, this)) {
  state_->setBreaks(Breaks::afterComma);
  pluggedIn_->setBreaks(Breaks::words);
  pluggedIn_->setTabularDigits();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(ring_);
  auto* lines = new QVBoxLayout;
  row->addLayout(lines, 1);
  lines->addStretch();
  lines->addWidget(state_);
  lines->addWidget(pluggedIn_);
  lines->addWidget(banner_);
  lines->addStretch();
  setTexts({}, {}, {});
  style.follow(this, [this, &style, row, lines] {
    row->setSpacing(style.px(kGap));
    lines->setSpacing(style.px(kBetweenLines));
    updateGeometry();
  });
}

void Header::setTexts(const QString& state, const QString& pluggedIn, const QString& snooze) {
  state_->setText(state);
  pluggedIn_->setText(pluggedIn);
  pluggedIn_->setVisible(!pluggedIn.isEmpty());
  banner_->setText(snooze);
  banner_->setVisible(!snooze.isEmpty());
  updateGeometry();
}

}  // namespace tollbeam
