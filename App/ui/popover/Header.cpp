#include "ui/popover/Header.h"

namespace tollbeam {

namespace {

constexpr double kGap = 16;
constexpr double kBetweenLines = 4;

}  // namespace

Header::Header(const Style& style, QWidget* parent)
    : QWidget(parent),
      style_(style),
      ring_(new RingView(style, this)),
      state_(new Text(style, Role::headline, Ink::primary, this)),
      pluggedIn_(new Text(style, Role::caption, Ink::secondary, this)),
      banner_(new SnoozeBanner(style, this)),
      row_(new QHBoxLayout(this)),
      lines_(new QVBoxLayout) {
  state_->setBreaks(Breaks::afterComma);
  pluggedIn_->setBreaks(Breaks::words);
  pluggedIn_->setTabularDigits();
  row_->setContentsMargins(0, 0, 0, 0);
  row_->addWidget(ring_);
  row_->addLayout(lines_, 1);
  lines_->addStretch();
  lines_->addWidget(state_);
  lines_->addWidget(pluggedIn_);
  lines_->addWidget(banner_);
  lines_->addStretch();
  setPluggedIn(std::nullopt);
  setSnooze(std::nullopt);
  connect(&style_, &Style::changed, this, &Header::restyle);
  restyle();
}

void Header::restyle() {
  row_->setSpacing(style_.px(kGap));
  lines_->setSpacing(style_.px(kBetweenLines));
  updateGeometry();
}

void Header::setState(const QString& text) {
  state_->setText(text);
  updateGeometry();
}

void Header::setPluggedIn(const std::optional<QString>& text) {
  if (text) pluggedIn_->setText(*text);
  pluggedIn_->setVisible(text.has_value());
  updateGeometry();
}

void Header::setSnooze(const std::optional<QString>& text) {
  if (text) banner_->setText(*text);
  banner_->setVisible(text.has_value());
  updateGeometry();
}

}  // namespace tollbeam
