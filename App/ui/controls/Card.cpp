#include "ui/controls/Card.h"

#include <QPainter>
#include <QStyle>

#include "ui/controls/Accessibility.h"
#include "ui/controls/Fill.h"
#include "ui/controls/FollowStyle.h"

namespace tollbeam {

namespace {

constexpr double kRadius = 10;
constexpr int kInset = 14;
constexpr int kSpacing = 8;

}  // namespace

FormRow::FormRow(const Style& style, Measures measures)
    : style_(style), measures_(measures), line_(new QHBoxLayout(this)) {
  connect(&style_, &Style::changed, this, &FormRow::restyle);
  restyle();
}

void FormRow::restyle() {
  const int side = style_.px(measures_.horizontal);
  line_->setContentsMargins(side, style_.px(measures_.vertical), side, style_.px(measures_.below));
  line_->setSpacing(style_.px(kSpacing));
  setMinimumHeight(style_.px(measures_.least));
  update();
}

void FormRow::put(Text* label, QWidget* control) {
  label->setBreaks(Breaks::words);
  control->setAccessibleName(label->text());
  line_->addWidget(label, 1);
  line_->addWidget(control);
}

void FormRow::put(QWidget* control) {
  line_->addWidget(control);
  line_->addStretch(1);
}

void FormRow::fill(Text* text) {
  text->setBreaks(Breaks::words);
  line_->addWidget(text, 1);
}

void FormRow::setMeasures(Measures measures) {
  measures_ = measures;
  restyle();
}

void FormRow::setHairline(bool on) {
  hairline_ = on;
  update();
}

void FormRow::paintEvent(QPaintEvent* /*event*/) {
  if (!hairline_) return;
  QPainter painter(this);
  const int start = style_.px(kInset);
  // Ends at the card's outline: both are translucent, and their crossing would show.
  const QRect line(start, 0, width() - start - 1, 1);
  painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), line), style_.colours().hairline);
}

Card::Card(const Style& style, const QString& name, QWidget* parent)
    : QWidget(parent), style_(style), rows_(new QVBoxLayout(this)) {
  setAccessibleRole(*this, QAccessible::Grouping);
  setAccessibleName(name);
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(0);
  followStyle(*this, style);
}

void Card::add(FormRow* row) {
  if (rows_->isEmpty()) row->setHairline(false);
  rows_->addWidget(row);
}

void Card::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Colours& colours = style_.colours();
  paintPanel(painter, rect(), style_.px(kRadius), colours.card, colours.hairline);
}

}  // namespace tollbeam
